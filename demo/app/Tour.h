#pragma once

#include "platform/foundation/RunLoop.h"

#include <QPointF>
#include <QString>
#include <functional>
#include <vector>

class QQuickWindow;

namespace orvel {

class AppDelegate;
class RadioViewController;

// Uses the application as a listener would, for machines without a display: waits for the list, taps the
// first radio, scrolls, opens the menu, leaves a screenshot of each state in a folder and prints what plays.
// Ends the application after some seconds: with exit code 1 when the radio has not played.
class Tour
{
public:
    Tour(AppDelegate &delegate, QQuickWindow &window, const QString &folder, double seconds);
    ~Tour();
    Tour(const Tour &) = delete;
    Tour &operator=(const Tour &) = delete;

private:
    struct Step
    {
        std::function<bool()> isDue;
        const char *screenshot; // taken when it is due
        std::function<void()> act;
    };
    void look();
    void print(const QString &line) const;
    void takeScreenshot(const QString &name);
    void tap(QPointF place);
    void tapFirstRow();
    RadioViewController &radios() const;
    // True once `seconds` have gone by since the last step.
    bool hasRested(double seconds) const;

    AppDelegate &m_delegate;
    QQuickWindow &m_window;
    const QString m_folder;
    const double m_end;
    double m_lastStep;
    std::vector<Step> m_steps;
    std::size_t m_next = 0;
    bool m_hasPlayed = false;
    QString m_lastState;
    RunLoop::Token m_looking = 0;
};

} // namespace orvel
