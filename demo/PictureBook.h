#pragma once

#include "demo/StationContent.h"
#include "demo/WebServer.h"

#include <QHash>

#include <mutex>
#include <optional>

namespace orvel::demo {

// The pictures below "/media/": each radio's cover "<radio>.jpg" and logo "<radio>-logo.png", drawn when
// first asked for.
class PictureBook
{
public:
    // `programmes` outlives the book.
    explicit PictureBook(const std::vector<Programme> &programmes);

    // nullopt when there is no such picture. Any thread.
    std::optional<WebAnswer> answer(const WebRequest &request);

private:
    QByteArray picture(const QString &name);

    const std::vector<Programme> &m_programmes;
    std::mutex m_mutex;
    QHash<QString, QByteArray> m_drawn;
};

} // namespace orvel::demo
