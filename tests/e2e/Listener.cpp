#include "e2e/Listener.h"

#include "app/AppDelegate.h"
#include "app/MenuController.h"
#include "platform/ui/NavigationController.h"
#include "screens/radio/RadioViewController.h"
#include "support/TestLoop.h"

#include <QFile>
#include <QTest>
#include <cmath>

namespace orvel::test {

namespace {

StationConfiguration configurationFor(const DemoStation &station)
{
    StationConfiguration configuration = StationConfiguration::compiledIn();
    configuration.siteUrl = station.siteUrl();
    configuration.networkWebradioUrl = station.networkWebradioUrl();
    return configuration;
}

// Calls `look` with every item in sight, what lies behind first.
void visit(QQuickItem *item, const std::function<void(QQuickItem *)> &look)
{
    if (!item->isVisible() || item->opacity() == 0)
        return;
    look(item);
    for (QQuickItem *child : item->childItems())
        visit(child, look);
}

} // namespace

Listener::Listener() : m_station(DemoStation::start({}))
{
    m_application = std::make_unique<Application>(
        configurationFor(*m_station), StreamerServices{.reachability = reachabilityForLocalStation});
    if (!m_application->start())
        qFatal("The window can't be shown");
    if (!QTest::qWaitForWindowExposed(&window()))
        qFatal("The window was not exposed");
}

Listener::~Listener() = default;

QStringList Listener::texts() const
{
    QStringList seen;
    const QRectF all(QPointF(), window().size());
    visit(window().contentItem(), [&](QQuickItem *item) {
        const QString text = item->property("text").toString();
        if (!text.isEmpty() && all.intersects(item->mapRectToScene(item->boundingRect())))
            seen << text;
    });
    return seen;
}

QQuickItem *Listener::find(const QString &text) const
{
    QQuickItem *found = nullptr;
    visit(window().contentItem(), [&](QQuickItem *item) {
        if (item->property("text").toString() == text)
            found = item;
    });
    return found;
}

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
    // A finger waits until what it is after stands still.
    QPointF place(-1, -1);
    const bool stands = waitsFor([&] {
        QTest::qWait(50);
        const QQuickItem *const item = find(text);
        const QPointF before =
            std::exchange(place, item ? item->mapToScene(item->boundingRect().center()) : QPointF(-1, -1));
        return !item || before == place;
    });
    if (!stands || place == QPointF(-1, -1))
        return false;
    QTest::mouseClick(&window(), Qt::LeftButton, {}, place.toPoint());
    return true;
}

void Listener::presses(Qt::Key key) { QTest::keyClick(&window(), key); }

void Listener::types(const char *text)
{
    for (; *text != 0; ++text)
        QTest::keyClick(&window(), *text);
}

bool Listener::choosesInMenu(const QString &row) { return chooses(row, false); }

bool Listener::choosesAtMenusEnd(const QString &row) { return chooses(row, true); }

bool Listener::chooses(const QString &row, bool atEnd)
{
    const auto &panel = app().revealSideViewController();
    if (!panel->isOpen() && !touches(QStringLiteral("Menu")))
        return false;
    TableView &table = dynamic_cast<MenuController &>(*panel->leftController()).tableCont;
    // The rows get their titles a moment after the menu was first made.
    const bool there = waitsFor([&] {
        table.setContentOffset(atEnd ? table.contentHeight() - table.frame().height() : 0);
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

double Listener::loudness()
{
    QFile file(qEnvironmentVariable("SDL_DISKAUDIOFILE"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    // 44.1 kHz, two channels, floating point.
    constexpr qint64 halfSecond = 44100 * 4;
    file.seek(std::max<qint64>(0, file.size() / 8 * 8 - halfSecond));
    const QByteArray bytes = file.readAll();
    const auto *const samples = reinterpret_cast<const float *>(bytes.constData());
    const qsizetype count = bytes.size() / qsizetype(sizeof(float));
    double sum = 0;
    for (qsizetype i = 0; i < count; ++i)
        sum += double(samples[i]) * double(samples[i]);
    return count == 0 ? 0 : std::sqrt(sum / double(count));
}

} // namespace orvel::test
