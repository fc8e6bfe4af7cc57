#include "platform/foundation/NotificationCentre.h"

#include <algorithm>

namespace orvel {

NotificationCentre &NotificationCentre::defaultCentre()
{
    static NotificationCentre centre;
    return centre;
}

void NotificationCentre::addObserver(const void *observer, const QString &name, Handler handler)
{
    m_registrations.push_back({++m_lastNumber, observer, name, std::move(handler)});
}

void NotificationCentre::removeObserver(const void *observer)
{
    std::erase_if(m_registrations, [&](const Registration &r) { return r.observer == observer; });
}

void NotificationCentre::postNotification(const QString &name, const QVariant &object)
{
    // Handlers add and remove observers: walk by number and look each one up again.
    const quint64 last = m_lastNumber;
    quint64 done = 0;
    while (true) {
        const auto next =
            std::find_if(m_registrations.begin(), m_registrations.end(), [&](const Registration &r) {
                return r.number > done && r.number <= last && r.name == name;
            });
        if (next == m_registrations.end())
            return;
        done = next->number;
        const Handler handler = next->handler;
        handler({name, object});
    }
}

} // namespace orvel
