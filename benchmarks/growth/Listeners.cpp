// Lets players come and go, ten at a time: "orvel-bench-listeners URL...". Each round waits for a line of its
// standard input; it answers with one when all of the round's players have gone.
#include "audio/live/Streamer.h"
#include "platform/foundation/MainQueue.h"
#include "platform/foundation/OneHeap.h"
#include "platform/foundation/SerialQueue.h"
#include "platform/media/output/SoundOutput.h"
#include "platform/net/UrlConnection.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <algorithm>
#include <iostream>
#include <malloc.h>
#include <string>
#include <vector>

using namespace orvel;

namespace {

// A player leaves at once, or when it has connected, buffered or, most of them, been heard.
RadioState momentOf(std::size_t player) { return RadioState(std::min(int(player), int(RadioStatePlaying))); }

void waitUntilReady(const std::vector<std::shared_ptr<Streamer>> &players)
{
    const QDeadlineTimer deadline(std::chrono::minutes(1));
    for (std::size_t i = 0; i < players.size(); ++i) {
        while (players[i]->radioState() < momentOf(i)) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
            if (deadline.hasExpired())
                qFatal("A player does not play");
        }
        if (players[i]->radioState() == RadioStateError)
            qFatal("A player failed");
    }
}

void round(const QStringList &urls)
{
    std::vector<std::shared_ptr<Streamer>> players;
    for (qsizetype i = 0; i < 10; ++i) {
        players.push_back(Streamer::initWithURL(*Url::fromText(urls[i % urls.size()]),
                                                {.reachability = reachabilityForLocalStation}));
        players.back()->setBufferInSeconds(0);
        if (i > 0)
            players.back()->play();
    }
    waitUntilReady(players);
    for (const std::size_t back : {4, 5}) { // come back once
        players[back]->pause();
        players[back]->play();
    }
    waitUntilReady(players);
    for (const auto &player : players)
        player->shutdown();
}

} // namespace

int main(int argc, char *argv[])
{
    keepOneHeap();
    qputenv("QT_NO_GLIB", "1");
    QCoreApplication application(argc, argv);
    MainQueue::open();
    RunLoop::main();
    for (std::string line; std::getline(std::cin, line);) {
        round(QCoreApplication::arguments().mid(1));
        joinOutputQueues();
        QCoreApplication::processEvents();
        SerialQueue::joinThreads();
        ::malloc_trim(0);
        std::cout << "round" << std::endl;
    }
    closeConnections();
    MainQueue::close();
}
