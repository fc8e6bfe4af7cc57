#pragma once

#include "demo/StationContent.h"
#include "demo/WebServer.h"

#include <QHash>

#include <mutex>
#include <optional>

namespace orvel::demo {

// The sounds below "/sons/": half a minute of each radio's music, "<radio>.mp3" and so on, made when first
// asked for and served with ranges.
class SoundBook
{
public:
    // `programmes` outlives the book.
    explicit SoundBook(const std::vector<Programme> &programmes) : m_programmes(programmes) {}

    // nullopt when there is no such sound. Any thread.
    std::optional<WebAnswer> answer(const WebRequest &request);

private:
    const std::vector<Programme> &m_programmes;
    std::mutex m_mutex;
    QHash<QString, QByteArray> m_made;
};

} // namespace orvel::demo
