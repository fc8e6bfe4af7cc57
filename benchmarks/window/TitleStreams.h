#pragma once

#include <QByteArray>
#include <chrono>
#include <functional>
#include <list>
#include <thread>
#include <vector>

namespace orvel::benchmark {

// Live streams "/0", "/1" and so on, 127.0.0.1, all of the same sound, with metadata every 16,000 bytes: each
// names its title in the first block, "Artiste 17 - Titre 17". The first 64 KiB come at once, the rest 1,400
// bytes at a time at the pace of 128 kbit/s. Runs on a thread of its own for the rest of the program.
class TitleStreams
{
public:
    // `answerDelay`: from a request to its answer. `roundEnded` is called on the thread whenever the listener
    // of the last stream but one has gone, with the time since stream 0 was asked for.
    TitleStreams(int count, const QByteArray &sound, std::chrono::milliseconds answerDelay,
                 std::function<void(double seconds)> roundEnded);
    ~TitleStreams();
    TitleStreams(const TitleStreams &) = delete;
    TitleStreams &operator=(const TitleStreams &) = delete;

    int port() const { return m_port; }
    // To be asked when nobody listens any more.
    int mostListeners() const { return m_mostListeners; } // at a time
    const std::vector<int> &requests() const { return m_requests; }

private:
    using Clock = std::chrono::steady_clock;
    struct Listener
    {
        int socket;
        QByteArray request{};
        int stream = -1;
        Clock::time_point next = Clock::time_point::max(); // when something is to be sent
        QByteArray waiting{};                              // not taken yet
        qsizetype position = 0;                            // in m_sound, once the burst is laid out
    };

    void serve(const std::stop_token &stop);
    void accept();
    // Lets go of the listeners that have gone.
    void readAll();
    // False once the listener has gone.
    bool read(Listener &listener);
    void write(Listener &listener, Clock::time_point now);
    void gone(const Listener &listener);
    QByteArray beginning(int stream) const;

    const int m_count;
    const std::chrono::milliseconds m_answerDelay;
    const std::function<void(double)> m_roundEnded;
    QByteArray m_sound; // whole intervals, each with the empty block that follows it
    int m_listening = -1;
    int m_port = 0;
    int m_mostListeners = 0;
    std::vector<int> m_requests;
    Clock::time_point m_roundBegan;
    std::list<Listener> m_listeners;
    std::jthread m_thread;
};

} // namespace orvel::benchmark
