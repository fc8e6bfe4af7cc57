#include "e2e/Listener.h"

#include "app/AppDelegate.h"
#include "platform/modal/InputGate.h"
#include "platform/ui/containers/NavigationController.h"
#include "screens/radio/RadioViewController.h"
#include "support/TestLoop.h"

#include <QFile>
#include <QTest>
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <span>

namespace orvel::test {

Listener::Listener() : m_station(DemoStation::start({}))
{
    StationConfiguration configuration = StationConfiguration::compiledIn();
    configuration.siteUrl = m_station->siteUrl();
    configuration.networkWebradioUrl = m_station->networkWebradioUrl();
    m_application = std::make_unique<Application>(
        configuration, StreamerServices{.reachability = reachabilityForLocalStation});
    if (!m_application->start())
        qFatal("The window can't be shown");
    if (!QTest::qWaitForWindowExposed(&window()))
        qFatal("The window was not exposed");
    m_visitor = std::make_unique<Visitor>(window());
    EXPECT_TRUE(waitsToSee("Orvel La Radio"));
}

Listener::~Listener() = default;

bool Listener::waitsFor(const std::function<bool()> &condition) { return waitUntil(condition, 40); }

bool Listener::waitsToSee(const QString &text)
{
    return waitsFor([&] { return sees(text); });
}

bool Listener::waitsNotToSee(const QString &text)
{
    return waitsFor([&] { return !sees(text); });
}

bool Listener::touches(const QString &text)
{
    return waitsFor([&] {
        QTest::qWait(50);
        return m_visitor->touch(text);
    });
}

void Listener::presses(Qt::Key key)
{
    waitsFor([] { return !InputGate::shared().isHeld(); });
    m_visitor->press(key);
}

void Listener::types(const char *text)
{
    waitsFor([] { return !InputGate::shared().isHeld(); });
    m_visitor->type(QString::fromLatin1(text));
}

bool Listener::acknowledges(const QString &message)
{
    return waitsToSee(message) && touches(QStringLiteral("OK")) && waitsNotToSee(message);
}

bool Listener::plays() const
{
    const auto &radio = m_application->delegate().radio();
    return radio && radio->radioState() == RadioStatePlaying;
}

bool Listener::choosesInMenu(const QString &row, bool scrolledToItsEnd)
{
    const auto &panel = app().revealSideViewController();
    if (!panel->isOpen() && !touches(QStringLiteral("Menu")))
        return false;
    // The rows get their titles a moment after the menu was first made.
    const bool there = waitsFor([&] {
        m_visitor->scroll(scrolledToItsEnd ? 1 : 0);
        return sees(row);
    });
    return there && touches(row);
}

void Listener::scrollsTo(double offset)
{
    auto *const center = app().revealSideViewController()->centerController();
    auto *const navigation = dynamic_cast<NavigationController *>(center);
    dynamic_cast<RadioViewController &>(navigation ? *navigation->topViewController() : *center)
        .tableCont.setContentOffset(offset);
}

bool Listener::isHeard()
{
    QFile file(qEnvironmentVariable("SDL_DISKAUDIOFILE"));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    // 44.1 kHz, two channels, floating point.
    constexpr qint64 halfSecond = 44100 * 4;
    file.seek(std::max<qint64>(0, file.size() / 8 * 8 - halfSecond));
    const QByteArray bytes = file.readAll();
    const std::span samples(reinterpret_cast<const float *>(bytes.constData()),
                            std::size_t(bytes.size()) / sizeof(float));
    return std::ranges::any_of(samples, [](float sample) { return std::abs(sample) > 0.01F; });
}

} // namespace orvel::test
