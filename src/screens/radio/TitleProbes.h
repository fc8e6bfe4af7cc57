#pragma once

#include <QString>
#include <memory>

namespace orvel {

// A list of radios whose rows show the title that each plays.
class TitledRadios
{
public:
    virtual ~TitledRadios() = default;
    virtual int numberOfRadios() const = 0;
    // The address of the stream of a row's radio.
    virtual QString streamOf(int row) const = 0;
    virtual void showTitle(int row, const QString &title) = 0;
};

// A chain of probes that asks the streams of a list, one after another, for the title they play. A round
// begins 120 s after the one before has ended. The chain goes on while its probes are completed: a probe that
// never is ends it. Its probe or its pending round keeps the list alive. Main thread.
// Deliberate: a list's last radio is never probed (TitleProbesTest.EveryRowButTheLastGetsItsTitleInOrder).
// Deliberate: a chain outlives its screen's being seen
// (TitleProbesTest.KeepTheirScreenUntilTheyCanGoOnNoMore).
class TitleProbes : public std::enable_shared_from_this<TitleProbes>
{
public:
    // Starts a chain of its own for the list, on a later turn of the main queue.
    static void start(std::shared_ptr<TitledRadios> radios);

private:
    explicit TitleProbes(std::shared_ptr<TitledRadios> radios) : m_radios(std::move(radios)) {}
    void fire();
    void probe();
    void wasProbed(const QString &title);

    const std::shared_ptr<TitledRadios> m_radios;
    qint32 m_intTitle = -1; // the row that is probed; -1 between the rounds
};

} // namespace orvel
