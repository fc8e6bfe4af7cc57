#pragma once

#include <QObject>
#include <QQmlEngine>
#include <QString>

namespace orvel {

// The progress overlay: a turning indicator with a status text over a mask that blocks touches. Main thread.
class ProgressHud : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool visible READ isVisible NOTIFY changed)
    Q_PROPERTY(QString status READ status NOTIFY changed)
    Q_PROPERTY(bool dimmed READ isDimmed NOTIFY changed)
public:
    // Both swallow touches; Clear leaves what lies beneath undimmed.
    enum class MaskType { Clear = 2, Black = 3 };

    static ProgressHud &shared();
    // Returns what layouts see under the type's name: shared().
    static ProgressHud *create(QQmlEngine *, QJSEngine *);

    // Shows the overlay until the next dismiss(), however often it was called. The input gate is held
    // meanwhile.
    void showWithStatus(const QString &status, MaskType mask = MaskType::Clear);
    void dismiss();

    bool isVisible() const { return m_visible; }
    const QString &status() const { return m_status; }
    bool isDimmed() const { return m_mask == MaskType::Black; }

Q_SIGNALS:
    void changed();

private:
    ProgressHud() = default;
    bool m_visible = false;
    QString m_status;
    MaskType m_mask = MaskType::Clear;
};

} // namespace orvel
