#include "benchmarks/titles/LeftScreen.h"

#include "app/AppDelegate.h"
#include "platform/foundation/RunLoop.h"
#include "platform/ui/containers/RevealSideViewController.h"

#include <QCoreApplication>
#include <QTimer>
#include <algorithm>
#include <cstdio>

namespace orvel::benchmark {

LeftScreen::LeftScreen(Application &application, std::shared_ptr<ViewController> screen, bool hasRounds)
    : m_application(application), m_hasRounds(hasRounds), m_screens{screen}
{
    m_rounds.setEnded([this](double) { roundEnded(); });
    if (!hasRounds) {
        after(1, [this] { roundEnded(); });
        after(121, [this] { roundEnded(); });
    }
}

void LeftScreen::roundEnded()
{
    ++m_roundCount;
    if (m_roundCount == 1)
        pauseBegins();
    else if (m_roundCount == 2)
        leaveForRest();
    else
        leaveVisit();
}

void LeftScreen::pauseBegins()
{
    after(3, [this] { say("pause"); });
    after(118, [this] { say("pause-over"); });
}

void LeftScreen::leaveForRest()
{
    say("next");
    become(QStringLiteral("FrequenceController"));
    after(3, [this] {
        say("left");
        RunLoop::main().cancelAll();
    });
    after(4, [this] { say("gone"); });
    after(34, [this] {
        say("rest");
        visit();
    });
}

void LeftScreen::visit()
{
    become(QStringLiteral("RadioViewController"));
    m_screens.push_back(
        m_application.delegate().revealSideViewController()->centerController()->weak_from_this());
    if (!m_hasRounds)
        after(0.5, [this] { roundEnded(); });
}

void LeftScreen::leaveVisit()
{
    // The list's layout is made by then, and the other screen's list has come.
    after(0.2, [this] { become(QStringLiteral("FrequenceController")); });
    after(0.7, [this] {
        RunLoop::main().cancelAll();
        if (--m_visitsLeft > 0) {
            visit();
            return;
        }
        // Threads that wait for more pictures to decode end after 30 s.
        after(33, [this] { say("visited"); });
        after(34, [] { QCoreApplication::exit(0); });
    });
}

void LeftScreen::become(const QString &layoutName)
{
    const AppDelegate &delegate = m_application.delegate();
    delegate.revealSideViewController()->popViewControllerWithNewCenterController(
        delegate.catalogue().screenNamed(layoutName), false);
}

// The client's own run loop is not asked: its calls are those that are dropped.
void LeftScreen::after(double seconds, const std::function<void()> &function)
{
    QTimer::singleShot(int(seconds * 1000), Qt::PreciseTimer, this, function);
}

void LeftScreen::say(const char *what) const
{
    const auto there = std::ranges::count_if(m_screens, [](const auto &screen) { return !screen.expired(); });
    std::printf("%s %d\n", what, int(there));
    std::fflush(stdout);
}

} // namespace orvel::benchmark
