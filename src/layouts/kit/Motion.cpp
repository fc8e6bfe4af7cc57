#include "layouts/kit/Motion.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace orvel {

namespace {

const QString portal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString place = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settings = QStringLiteral("org.freedesktop.portal.Settings");
const QString group = QStringLiteral("org.gnome.desktop.interface");
const QString key = QStringLiteral("enable-animations");

bool isFalse(const QDBusVariant &value)
{
    const QVariant held = value.variant();
    // A portal's answer is a variant within a variant.
    return held.canConvert<QDBusVariant>() ? isFalse(held.value<QDBusVariant>()) : held == QVariant(false);
}

} // namespace

Motion::Motion()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    bus.connect(portal, place, settings, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QDBusMessage)));
    QDBusMessage read = QDBusMessage::createMethodCall(portal, place, settings, QStringLiteral("Read"));
    read << group << key;
    auto *const answer = new QDBusPendingCallWatcher(bus.asyncCall(read), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        if (reply.isValid())
            setReduced(isFalse(reply.value()));
        answer->deleteLater();
    });
}

void Motion::setReduced(bool reduced)
{
    if (m_reduced == reduced)
        return;
    m_reduced = reduced;
    Q_EMIT reducedChanged();
}

void Motion::settingChanged(const QDBusMessage &signal)
{
    const QVariantList parts = signal.arguments();
    if (parts.size() == 3 && parts[0] == group && parts[1] == key)
        setReduced(isFalse(parts[2].value<QDBusVariant>()));
}

} // namespace orvel
