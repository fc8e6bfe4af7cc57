#pragma once

#include <QByteArray>
#include <QString>

namespace orvel::test {

// A listener on a plain socket, which sees how a stream ends.
class StreamClient
{
public:
    enum class End { Open, Closed, Reset };

    explicit StreamClient(const QString &url, const QByteArray &headers = {});
    ~StreamClient();
    StreamClient(const StreamClient &) = delete;
    StreamClient &operator=(const StreamClient &) = delete;

    // Reads until the body has `bytes`, or the stream ends, or nothing came for `patience` milliseconds.
    void readBody(qsizetype bytes, int patience = 20000);
    End end() const { return m_end; }

    QByteArray head() const; // without the empty line
    QByteArray body() const;

private:
    int m_socket;
    End m_end = End::Open;
    QByteArray m_received;
};

} // namespace orvel::test
