#pragma once

#include <QString>
#include <QVariant>
#include <functional>
#include <vector>

namespace orvel {

// A named notification with an object: a text, another value or an invalid variant.
struct Notification
{
    QString name;
    QVariant object;
};

// Delivers posted notifications to their observers at once, in the order in which they were added. Main
// thread only.
class NotificationCentre
{
public:
    using Handler = std::function<void(const Notification &)>;

    static NotificationCentre &defaultCentre();

    // `observer` is the key by which all of an observer's handlers are removed. It is not kept alive.
    void addObserver(const void *observer, const QString &name, Handler handler);
    // May be called while a notification is posted: a removed observer is not called any more.
    void removeObserver(const void *observer);
    void postNotification(const QString &name, const QVariant &object = {});

private:
    struct Registration
    {
        quint64 number;
        const void *observer;
        QString name;
        Handler handler;
    };
    std::vector<Registration> m_registrations;
    quint64 m_lastNumber = 0;
};

// Posted by the shell when the application leaves the foreground and when it comes back.
inline const QString applicationDidEnterBackground = QStringLiteral("ApplicationDidEnterBackground");
inline const QString applicationWillEnterForeground = QStringLiteral("ApplicationWillEnterForeground");

} // namespace orvel
