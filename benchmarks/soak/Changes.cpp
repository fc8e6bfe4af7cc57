// Plays what its standard input names, a line each, "live URL" or "file URL", and stops what it played
// before. Answers each line with one when it plays: "playing", or "failed".
#include "audio/file/AudioStreamer.h"
#include "audio/live/Streamer.h"
#include "platform/foundation/MainQueue.h"
#include "platform/foundation/OneHeap.h"
#include "platform/foundation/SerialQueue.h"
#include "platform/net/UrlConnection.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QSocketNotifier>
#include <iostream>
#include <string>
#include <unistd.h>

using namespace orvel;

namespace {

// What plays now.
struct Playing
{
    std::shared_ptr<Streamer> live;
    std::shared_ptr<AudioStreamer> file;

    void stop()
    {
        if (live)
            live->shutdown();
        if (file)
            file->stop();
        live.reset();
        file.reset();
    }
    void start(bool isFile, const Url &url)
    {
        if (isFile) {
            file = AudioStreamer::initWithURL(url);
            file->start();
        } else {
            live = Streamer::initWithURL(url, {.reachability = reachabilityForLocalStation});
            live->setBufferInSeconds(1);
            live->play();
        }
    }
    bool plays() const { return live ? live->radioState() == RadioStatePlaying : file->isPlaying(); }
};

void change(Playing &playing, const QString &line)
{
    playing.stop();
    playing.start(line.startsWith("file"), *Url::fromText(line.section(u' ', 1)));
    const QDeadlineTimer deadline(std::chrono::seconds(8));
    while (!playing.plays() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
    std::cout << (playing.plays() ? "playing" : "failed") << std::endl;
}

} // namespace

int main(int argc, char *argv[])
{
    keepOneHeap();
    qputenv("QT_NO_GLIB", "1");
    QCoreApplication application(argc, argv);
    MainQueue::open();
    RunLoop::main();
    {
        Playing playing;
        QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
        QObject::connect(&input, &QSocketNotifier::activated, &input, [&] {
            std::string line;
            if (std::getline(std::cin, line))
                change(playing, QString::fromStdString(line));
            else
                QCoreApplication::quit();
        });
        QCoreApplication::exec();
        playing.stop();
    }
    joinOutputQueues();
    closeConnections();
    SerialQueue::joinThreads();
    MainQueue::close();
}
