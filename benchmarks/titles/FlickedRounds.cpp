#include "benchmarks/titles/FlickedRounds.h"

#include "benchmarks/window/Clocks.h"
#include "platform/foundation/RunLoop.h"
#include "screens/radio/cellCustomRadio.h"

#include <QCoreApplication>
#include <cstdio>

namespace orvel::benchmark {

FlickedRounds::FlickedRounds(QQuickWindow &window, std::shared_ptr<RadioViewController> screen,
                             double seconds, int phases)
    : m_flicking(window), m_screen(std::move(screen)), m_seconds(seconds), m_phasesLeft(phases)
{
    m_rounds.setEnded([this](double time) { roundEnded(time); });
}

void FlickedRounds::roundEnded(double seconds)
{
    ++m_roundCount;
    if (m_phase == Phase::First) {
        std::printf("{\"phase\": \"first\", \"seconds\": %.6f}\n", seconds);
        // The overlay has gone and the first pictures are there by then.
        QTimer::singleShot(1500, this, [this] { begin(Phase::Pause); });
    } else if (clockMs(CLOCK_MONOTONIC) - m_began < m_seconds * 1000) {
        beginRound();
    } else {
        end();
    }
}

void FlickedRounds::begin(Phase phase)
{
    m_phase = phase;
    m_roundCount = 0;
    m_began = clockMs(CLOCK_MONOTONIC);
    m_mainCpu = clockMs(CLOCK_THREAD_CPUTIME_ID);
    m_processCpu = clockMs(CLOCK_PROCESS_CPUTIME_ID);
    if (phase != Phase::Still)
        m_flicking.start();
    if (phase == Phase::Pause)
        QTimer::singleShot(int(m_seconds * 1000), this, &FlickedRounds::end);
    else
        beginRound();
}

// The call that the pause ends with is dropped: rounds follow each other, and there is never more than one.
void FlickedRounds::beginRound()
{
    RunLoop::main().cancelAll();
    TitleProbes::start(m_screen);
}

void FlickedRounds::end()
{
    const double wall = clockMs(CLOCK_MONOTONIC) - m_began;
    const double main = clockMs(CLOCK_THREAD_CPUTIME_ID) - m_mainCpu;
    const double process = clockMs(CLOCK_PROCESS_CPUTIME_ID) - m_processCpu;
    const Frames frames = m_flicking.stop();
    if (m_phase == Phase::Still || m_phasesToForget == 0) {
        const char *const name =
            m_phase == Phase::Pause ? "pause" : (m_phase == Phase::Rounds ? "rounds" : "still");
        std::printf("{\"phase\": \"%s\", \"rounds\": %d, \"wall\": %.3f, \"main\": %.3f, \"process\": %.3f, ",
                    name, m_roundCount, wall, main, process);
        print(frames);
        std::printf("}\n");
        --m_phasesLeft;
    } else {
        --m_phasesToForget;
    }
    if (m_phase == Phase::Still)
        printTitles();
    else if (m_phasesLeft > 0)
        begin(m_phase == Phase::Pause ? Phase::Rounds : Phase::Pause);
    else
        QTimer::singleShot(3000, this, [this] { begin(Phase::Still); }); // the list comes to rest
}

void FlickedRounds::printTitles()
{
    int right = 0;
    int empty = 0;
    const int rows = m_screen->numberOfRowsInSection(m_screen->tableCont, 0);
    for (int row = 0; row < rows; ++row) {
        const auto cell = std::static_pointer_cast<cellCustomRadio>(
            m_screen->cellForRowAtIndexPath(m_screen->tableCont, {0, row}));
        const QString title = cell->lblDesc.text();
        right += title == QStringLiteral("Artiste %1 - Titre %1").arg(row) ? 1 : 0;
        empty += title.isEmpty() && row == rows - 1 ? 1 : 0;
    }
    std::printf("{\"phase\": \"titles\", \"right\": %d, \"last empty\": %d}\n", right, empty);
    QCoreApplication::exit(0);
}

} // namespace orvel::benchmark
