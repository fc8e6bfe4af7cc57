#pragma once

#include "benchmarks/titles/Rounds.h"
#include "shell/Application.h"

#include <memory>
#include <vector>

namespace orvel {
class ViewController;
}

namespace orvel::benchmark {

// Leaves the screen of radios in the pause after its second round of titles and drops the call that is then
// pending; comes back 30 s later for 20 visits, each with its round, which end in the same way. Names on the
// standard output what has just come, with the number of screens of radios that exist: "pause", "pause-over"
// (a moment before it is), "next" (the second round is over), "left", "gone", "rest" and "visited".
class LeftScreen : public QObject
{
public:
    // A list without rounds, of one radio, goes through the same.
    LeftScreen(Application &application, std::shared_ptr<ViewController> screen, bool hasRounds);

private:
    void roundEnded();
    void pauseBegins();
    void leaveForRest();
    void visit();
    void leaveVisit();
    void become(const QString &layoutName);
    void after(double seconds, const std::function<void()> &function);
    void say(const char *what) const;

    Application &m_application;
    const bool m_hasRounds;
    Rounds m_rounds;
    int m_roundCount = 0;
    int m_visitsLeft = 20;
    std::vector<std::weak_ptr<ViewController>> m_screens; // that showed the radios
};

} // namespace orvel::benchmark
