#pragma once

#include "benchmarks/titles/Rounds.h"
#include "benchmarks/window/Flicking.h"
#include "screens/radio/RadioViewController.h"

namespace orvel::benchmark {

// Flicks the list of radios now during the pause between two rounds of titles, now while rounds follow each
// other without a pause; then lets rounds run while nothing moves. Prints a line of JSON for each of these
// phases, and one for the titles that the rows have in the end.
class FlickedRounds : public QObject
{
public:
    // Phases take `seconds`, or as long as one round. The first two, which fill caches, are not printed.
    FlickedRounds(QQuickWindow &window, std::shared_ptr<RadioViewController> screen, double seconds,
                  int phases);

private:
    // What is done: waits for the round that the list's arrival began, flicks in the pause or during rounds,
    // or watches rounds alone.
    enum class Phase { First, Pause, Rounds, Still };

    void roundEnded(double seconds);
    void begin(Phase phase);
    void beginRound();
    void end();
    void printTitles();

    Rounds m_rounds;
    Flicking m_flicking;
    const std::shared_ptr<RadioViewController> m_screen;
    const double m_seconds;
    int m_phasesLeft;
    int m_phasesToForget = 2;
    Phase m_phase = Phase::First;
    int m_roundCount = 0;    // in this phase
    double m_began = 0;      // ms: the monotonic clock,
    double m_mainCpu = 0;    // the main thread's
    double m_processCpu = 0; // and the process's CPU clock
};

} // namespace orvel::benchmark
