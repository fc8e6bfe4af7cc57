#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>
#include <functional>

namespace orvel::benchmark {

// Hears of the ends of rounds of titles: the station's lines "round SECONDS" on the standard input.
class Rounds : public QObject
{
public:
    // Called with the time since the round's first radio was asked, as the station saw it.
    void setEnded(std::function<void(double seconds)> ended) { m_ended = std::move(ended); }

    Rounds();

private:
    void read();

    QSocketNotifier m_input;
    QByteArray m_text;
    std::function<void(double)> m_ended;
};

} // namespace orvel::benchmark
