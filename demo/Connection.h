#pragma once

#include <QByteArray>

#include <chrono>
#include <mutex>

namespace orvel::demo {

// One listener's connection, owned by the thread that serves it; only `abort` may come from another one.
class Connection
{
public:
    explicit Connection(int socket);
    ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    // Returns the bytes that have come; empty after some seconds without any, or when the listener is gone.
    QByteArray receive();
    // Waits until everything is handed to the system. Returns false when the listener is gone.
    bool send(QByteArrayView bytes);
    // Waits. Returns false when the listener leaves within the time.
    bool stay(std::chrono::milliseconds time);
    void stayForGood();

    // Waits until the listener has everything that was sent, and makes `close` a reset.
    void reset();
    // The listener sees the end of the stream.
    void close();
    // Makes every wait return and every later one fail. Any thread, also after `close`.
    void abort();

private:
    bool waitFor(short events, int milliseconds) const;

    std::mutex m_closing; // keeps `abort` off a descriptor that is already somebody else's
    int m_socket;
};

} // namespace orvel::demo
