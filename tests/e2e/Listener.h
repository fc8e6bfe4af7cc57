#pragma once

#include "demo/DemoStation.h"
#include "shell/Application.h"
#include "shell/Shell.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <functional>

namespace orvel::test {

// The real program on its demo station, and somebody who looks at its window and touches it.
class Listener
{
public:
    Listener();
    ~Listener();

    // All texts that can be seen now, as they stand on the window.
    QStringList texts() const;
    bool sees(const QString &text) const { return texts().contains(text); }
    bool waitsToSee(const QString &text);
    bool waitsNotToSee(const QString &text);
    // Touches what bears this text. False when nothing does.
    bool touches(const QString &text);
    void presses(Qt::Key key);
    // Key by key, into what has the keyboard.
    void types(const char *text);
    // Opens the menu if it isn't and touches one of its first rows, or of its last.
    bool choosesInMenu(const QString &row);
    bool choosesAtMenusEnd(const QString &row);
    void scrollsTo(double offset);
    bool waitsFor(const std::function<bool()> &condition);
    // How loud the sound written so far is at its end: the root mean square of the last half second, 0 to 1.
    static double loudness();

    AppDelegate &app() { return m_application->delegate(); }
    const DemoStation &station() const { return *m_station; }
    QQuickWindow &window() const { return m_application->shell().quickWindow(); }

private:
    QQuickItem *find(const QString &text) const;
    bool chooses(const QString &row, bool atEnd);

    std::unique_ptr<DemoStation> m_station;
    std::unique_ptr<Application> m_application;
};

} // namespace orvel::test
