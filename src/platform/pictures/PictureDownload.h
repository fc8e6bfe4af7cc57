#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace orvel {

// Waits for the file at `url` as HttpRequest does, so only from inside a screen's delayed perform. Returns
// its bytes, which need not be a picture; an empty array when the download fails or its status is not 200 to
// 299; nullopt when the application quits meanwhile. Main thread.
std::optional<QByteArray> downloadPicture(const QString &url);

} // namespace orvel
