#pragma once

#include <QObject>
#include <QQmlEngine>
#include <QStringList>
#include <memory>

namespace orvel {

class AlertView;

class AlertViewDelegate
{
public:
    virtual ~AlertViewDelegate() = default;
    virtual void clickedButtonAtIndex(AlertView &alertView, int buttonIndex) = 0;
};

// A message over everything else that waits for one of its buttons. Window::showAlert shows it. Main
// thread.
class AlertView : public QObject, public std::enable_shared_from_this<AlertView>
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Alerts are shown from C++")
    Q_PROPERTY(QString title MEMBER m_title CONSTANT)
    Q_PROPERTY(QString message MEMBER m_message CONSTANT)
    Q_PROPERTY(QStringList buttons MEMBER m_buttons CONSTANT)
public:
    // Button 0 is the first of `buttons`, and what Escape and Back choose. The delegate is not kept alive.
    AlertView(const QString &title, const QString &message, const QStringList &buttons,
              std::weak_ptr<AlertViewDelegate> delegate, int tag);

    const QString &title() const { return m_title; }
    const QString &message() const { return m_message; }
    const QStringList &buttons() const { return m_buttons; }
    int tag() const { return m_tag; }

    // Takes the alert away, then tells the delegate. A second click does nothing.
    Q_INVOKABLE void click(int buttonIndex);

Q_SIGNALS:
    // It was clicked and is to go.
    void clicked();

private:
    QString m_title;
    QString m_message;
    QStringList m_buttons;
    std::weak_ptr<AlertViewDelegate> m_delegate;
    int m_tag = 0;
    bool m_clicked = false;
};

} // namespace orvel
