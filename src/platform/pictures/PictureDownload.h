#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace orvel {

// Waits for the picture at `url` as HttpRequest does, so only from inside a screen's delayed perform. Empty
// when it can't be had, nothing when the application quits meanwhile.
std::optional<QByteArray> downloadPicture(const QString &url);

} // namespace orvel
