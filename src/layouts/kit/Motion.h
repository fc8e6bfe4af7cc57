#pragma once

#include <QDBusMessage>
#include <QObject>
#include <QQmlEngine>

namespace orvel {

// Whether the user has asked the desktop for reduced motion: its settings portal says that animations are
// off. False until the portal has answered, and without one. Follows the setting. Main thread.
class Motion : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool reduced READ isReduced NOTIFY reducedChanged)
public:
    Motion();

    bool isReduced() const { return m_reduced; }
    void setReduced(bool reduced);

Q_SIGNALS:
    void reducedChanged();

private Q_SLOTS:
    void settingChanged(const QDBusMessage &signal);

private:
    bool m_reduced = false;
};

} // namespace orvel
