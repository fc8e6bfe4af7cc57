#include "demo/app/Tour.h"

#include "app/AppDelegate.h"
#include "platform/foundation/NotificationCentre.h"
#include "platform/ui/NavigationController.h"
#include "screens/radio/RadioViewController.h"

#include <QDir>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QQuickWindow>
#include <QTextStream>

namespace orvel {

Tour::Tour(AppDelegate &delegate, QQuickWindow &window, const QString &folder, double seconds)
    : m_delegate(delegate)
    , m_window(window)
    , m_folder(QDir(folder).absolutePath())
    , m_end(RunLoop::main().now() + seconds)
    , m_lastStep(RunLoop::main().now())
{
    QDir().mkpath(m_folder);
    TableView &table = radios().tableCont;
    m_steps = {
        {[&table] { return table.contentHeight() > 0 && table.elements()->rowCount() > 1; }, nullptr, [] {}},
        {[this] { return hasRested(1.5); }, "1-list", [this] { tapFirstRow(); }},
        {[this] { return m_hasPlayed && hasRested(2); }, "2-playing",
         [&table] {
             // The list's end, clear of the compact bar over it.
             constexpr double barRoom = 80;
             table.setContentOffset(table.contentHeight() + barRoom - table.frame().height());
         }},
        {[this] { return hasRested(1); }, "3-compact-bar", [&table] { table.setContentOffset(0); }},
        {[this] { return hasRested(1); }, nullptr, [this] { radios().acctionMenu(); }},
        {[this] { return hasRested(1.5); }, "4-menu",
         [this] { m_delegate.revealSideViewController()->close(true); }},
    };
    NotificationCentre::defaultCentre().addObserver(
        this, AppDelegate::songTitleNotification, [this](const Notification &notification) {
            const QStringList parts = notification.object.toString().split(QStringLiteral("&&&"));
            print(QStringLiteral("title: %1 (%2)").arg(parts.value(0), parts.value(1)));
        });
    m_looking = RunLoop::main().every(0.1, [this] { look(); });
}

Tour::~Tour()
{
    NotificationCentre::defaultCentre().removeObserver(this);
    RunLoop::main().cancel(m_looking);
}

void Tour::look()
{
    if (const auto &radio = m_delegate.radio()) {
        m_hasPlayed |= radio->radioState() == RadioStatePlaying;
        if (const QString state = nameOf(radio->radioState()); state != m_lastState) {
            m_lastState = state;
            print(QStringLiteral("%1: %2").arg(m_delegate.gl1, state));
        }
    }
    if (AlertView *const alert = m_delegate.window()->alert()) {
        if (!hasRested(1))
            return;
        print(QStringLiteral("alert: %1").arg(alert->message()));
        takeScreenshot(QStringLiteral("alert"));
        alert->click(0);
        m_lastStep = RunLoop::main().now();
    } else if (m_next < m_steps.size() && m_steps[m_next].isDue()) {
        const Step &step = m_steps[m_next++];
        if (step.screenshot)
            takeScreenshot(QString::fromLatin1(step.screenshot));
        step.act();
        m_lastStep = RunLoop::main().now();
    }
    if (RunLoop::main().now() > m_end) {
        print(QStringLiteral("screenshots: %1").arg(m_folder));
        QGuiApplication::exit(m_hasPlayed ? 0 : 1);
    }
}

bool Tour::hasRested(double seconds) const { return RunLoop::main().now() - m_lastStep > seconds; }

void Tour::print(const QString &line) const { QTextStream(stdout) << line << Qt::endl; }

void Tour::takeScreenshot(const QString &name)
{
    const QString path = m_folder + u'/' + name + QStringLiteral(".png");
    if (!m_window.grabWindow().save(path))
        print(QStringLiteral("can't write %1").arg(path));
}

void Tour::tap(QPointF place)
{
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, place, m_window.mapToGlobal(place), Qt::LeftButton,
                          type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        QGuiApplication::sendEvent(&m_window, &event);
    }
}

void Tour::tapFirstRow()
{
    RadioViewController &screen = radios();
    const QRectF list = screen.tableCont.frame();
    tap({list.center().x(), list.top() + screen.heightForHeaderInSection(screen.tableCont, 0) + 30});
}

RadioViewController &Tour::radios() const
{
    auto &navigation =
        static_cast<NavigationController &>(*m_delegate.revealSideViewController()->centerController());
    return static_cast<RadioViewController &>(*navigation.topViewController());
}

} // namespace orvel
