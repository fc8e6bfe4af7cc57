#include "layouts/kit/Motion.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace orvel {

namespace {

const QString portal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString place = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settings = QStringLiteral("org.freedesktop.portal.Settings");
const QString group = QStringLiteral("org.gnome.desktop.interface");
const QString key = QStringLiteral("enable-animations");

// A portal's answer is a variant within a variant.
QVariant inner(const QVariant &value)
{
    return value.canConvert<QDBusVariant>() ? inner(value.value<QDBusVariant>().variant()) : value;
}

} // namespace

Motion::Motion()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    bus.connect(portal, place, settings, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    QDBusMessage read = QDBusMessage::createMethodCall(portal, place, settings, QStringLiteral("Read"));
    read << group << key;
    auto *const answer = new QDBusPendingCallWatcher(bus.asyncCall(read), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        if (reply.isValid())
            settingChanged(group, key, reply.value());
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

void Motion::settingChanged(const QString &changedGroup, const QString &changedKey, const QDBusVariant &value)
{
    if (changedGroup == group && changedKey == key)
        setReduced(inner(value.variant()) == QVariant(false));
}

} // namespace orvel
