#pragma once

#include "demo/DemoStation.h"
#include "demo/app/Visitor.h"
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
    // Waits until the station's radios are there.
    Listener();
    ~Listener();

    QStringList texts() const { return m_visitor->texts(); }
    bool sees(const QString &text) const { return m_visitor->sees(text); }
    bool waitsToSee(const QString &text);
    bool waitsNotToSee(const QString &text);
    // Touches what bears this text, once it is there, stands still and may be touched.
    bool touches(const QString &text);
    // Sees an alert with this message and answers "OK".
    bool acknowledges(const QString &message);
    // Once the application takes input.
    void presses(Qt::Key key);
    // A tab goes to the next field.
    void types(const char *text);
    // Opens the menu if it isn't and touches one of the rows that it then shows.
    bool choosesInMenu(const QString &row, bool scrolledToItsEnd = false);
    void scrollsTo(double offset);
    bool waitsFor(const std::function<bool()> &condition);
    bool plays() const;
    // Whether the sound written so far ends in a half second that is not silent.
    static bool isHeard();

    AppDelegate &app() { return m_application->delegate(); }
    const DemoStation &station() const { return *m_station; }
    QQuickWindow &window() const { return m_application->shell().quickWindow(); }

private:
    std::unique_ptr<DemoStation> m_station;
    std::unique_ptr<Application> m_application;
    std::unique_ptr<Visitor> m_visitor;
};

} // namespace orvel::test
