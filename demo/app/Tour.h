#pragma once

#include "demo/app/TourSteps.h"
#include "demo/app/Visitor.h"
#include "platform/foundation/RunLoop.h"

namespace orvel {

class AppDelegate;

// Uses the application as a listener would, for machines without a display: goes through every screen, leaves
// pictures of them in a folder and prints what plays. Ends the application after its last step, or when
// `seconds` are over: with exit code 1 when it has not come to its last step or the radio has not played.
class Tour
{
public:
    Tour(AppDelegate &delegate, QQuickWindow &window, const QString &folder, double seconds);
    ~Tour();
    Tour(const Tour &) = delete;
    Tour &operator=(const Tour &) = delete;

private:
    void look();
    void printState();
    void takeStep();
    // Answers an alert that the steps do not expect: a client without a sound device shows one.
    void answerAlert();
    void takePicture(const QString &name);
    void finish();

    AppDelegate &m_delegate;
    Visitor m_visitor;
    const QString m_folder;
    const double m_end;
    const std::vector<TourStep> m_steps = tourSteps();
    std::size_t m_next = 0;
    bool m_acted = false; // in the next step
    double m_since;       // when it has done so and saw what it waited for
    bool m_hasPlayed = false;
    QString m_lastState;
    RunLoop::Token m_looking = 0;
};

} // namespace orvel
