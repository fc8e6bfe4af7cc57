#include "demo/app/Tour.h"

#include "app/AppDelegate.h"
#include "platform/foundation/NotificationCentre.h"

#include <QDir>
#include <QGuiApplication>
#include <QTextStream>

namespace orvel {

namespace {

void print(const QString &line) { QTextStream(stdout) << line << Qt::endl; }

} // namespace

Tour::Tour(AppDelegate &delegate, QQuickWindow &window, const QString &folder, double seconds)
    : m_delegate(delegate)
    , m_visitor(window)
    , m_folder(QDir(folder).absolutePath())
    , m_end(RunLoop::main().now() + seconds)
    , m_since(RunLoop::main().now())
{
    QDir().mkpath(m_folder);
    NotificationCentre::defaultCentre().addObserver(
        this, AppDelegate::songTitleNotification, [](const Notification &notification) {
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
    printState();
    if (m_next < m_steps.size() && RunLoop::main().now() < m_end)
        takeStep();
    else
        finish();
}

void Tour::printState()
{
    const auto &radio = m_delegate.radio();
    if (!radio)
        return;
    m_hasPlayed |= radio->radioState() == RadioStatePlaying;
    const QString state = nameOf(radio->radioState());
    if (std::exchange(m_lastState, state) != state)
        print(QStringLiteral("%1: %2").arg(m_delegate.gl1, state));
}

void Tour::takeStep()
{
    const TourStep &step = m_steps[m_next];
    const double now = RunLoop::main().now();
    if (!m_acted) {
        m_acted = step.act(m_visitor);
        m_since = now;
        if (!m_acted)
            answerAlert();
    } else if (!step.sees.isEmpty() && !m_visitor.sees(step.sees)) {
        m_since = now;
        answerAlert();
    } else if (now - m_since >= step.rest) {
        if (!step.picture.isEmpty())
            takePicture(step.picture);
        ++m_next;
        m_acted = false;
    }
}

void Tour::answerAlert()
{
    const QString ok = QStringLiteral("OK");
    const AlertView *const alert = m_delegate.window()->alert();
    if (!alert || alert->buttons() != QStringList(ok))
        return;
    const QString message = alert->message();
    if (m_visitor.touch(ok))
        print(QStringLiteral("alert: %1").arg(message));
}

void Tour::takePicture(const QString &name)
{
    const QString path = m_folder + u'/' + name + QStringLiteral(".png");
    if (!m_visitor.savePicture(path))
        print(QStringLiteral("can't write %1").arg(path));
}

void Tour::finish()
{
    const bool whole = m_next == m_steps.size();
    if (!whole) {
        takePicture(QStringLiteral("stuck"));
        print(
            QStringLiteral("step %1 is still waiting for \"%2\"").arg(m_next + 1).arg(m_steps[m_next].sees));
    }
    print(QStringLiteral("screenshots: %1").arg(m_folder));
    QGuiApplication::exit(m_hasPlayed && whole ? 0 : 1);
}

} // namespace orvel
