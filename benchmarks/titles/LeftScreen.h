#pragma once

#include "benchmarks/titles/Rounds.h"
#include "shell/Application.h"

#include <QTimer>
#include <memory>

namespace orvel {
class ViewController;
}

namespace orvel::benchmark {

// Leaves the screen of radios in the pause after its second round of titles, drops the call that is then
// pending, and names on the standard output what has just come: "pause", "pause over" (a moment before it
// is), "next" (the second round is over), "left N", "gone N", and "rest" 30 s later; N is 1 while the screen
// still exists.
class LeftScreen : public QObject
{
public:
    // A list without rounds, of one radio, goes through the same.
    LeftScreen(Application &application, bool hasRounds);

private:
    void pauseBegins();
    void leave();
    static void say(const char *what);
    void after(double seconds, const std::function<void()> &function);

    Application &m_application;
    Rounds m_rounds;
    int m_roundCount = 0;
    std::weak_ptr<ViewController> m_screen;
};

} // namespace orvel::benchmark
