#include "benchmarks/titles/LeftScreen.h"

#include "app/AppDelegate.h"
#include "platform/foundation/RunLoop.h"
#include "platform/ui/RevealSideViewController.h"

#include <QCoreApplication>
#include <cstdio>

namespace orvel::benchmark {

LeftScreen::LeftScreen(Application &application, bool hasRounds) : m_application(application)
{
    m_rounds.setEnded([this](double) { ++m_roundCount == 1 ? pauseBegins() : leave(); });
    if (!hasRounds) {
        after(1, [this] { pauseBegins(); });
        after(121, [this] { leave(); });
    }
}

// The rounds' own clock is the client's run loop; these are not to be held or dropped with it.
void LeftScreen::after(double seconds, const std::function<void()> &function)
{
    QTimer::singleShot(int(seconds * 1000), Qt::PreciseTimer, this, function);
}

void LeftScreen::pauseBegins()
{
    after(3, [] { say("pause"); });
    after(118, [] { say("pause over"); });
}

void LeftScreen::leave()
{
    say("next");
    RevealSideViewController &container = *m_application.delegate().revealSideViewController();
    m_screen = container.centerController()->weak_from_this();
    const auto other =
        m_application.delegate().catalogue().screenNamed(QStringLiteral("FrequenceController"));
    container.popViewControllerWithNewCenterController(other, true);
    after(3, [this] {
        say(m_screen.expired() ? "left 0" : "left 1");
        RunLoop::main().cancelAll();
    });
    after(4, [this] { say(m_screen.expired() ? "gone 0" : "gone 1"); });
    after(34, [] { say("rest"); });
    after(35, [] { QCoreApplication::exit(0); });
}

void LeftScreen::say(const char *what)
{
    std::printf("%s\n", what);
    std::fflush(stdout);
}

} // namespace orvel::benchmark
