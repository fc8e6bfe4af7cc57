#pragma once

#include "platform/ui/containers/Question.h"

#include <QStringList>

namespace orvel {

class AlertView;

using AlertViewDelegate = QuestionDelegate<AlertView>;

// A message over everything else that waits for one of its buttons. Window::showAlert shows it.
class AlertView : public orvel::Question
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Alerts are shown from C++")
    Q_PROPERTY(QString message MEMBER m_message CONSTANT)
    Q_PROPERTY(QStringList buttons MEMBER m_buttons CONSTANT)
public:
    // In characters. A server can send a longer one, which would hold up the window; the rest is cut off.
    static constexpr qsizetype maxMessageLength = 2000;

    // Button 0 is the first of `buttons`, and what Escape and Back choose.
    AlertView(const QString &title, const QString &message, const QStringList &buttons,
              std::weak_ptr<AlertViewDelegate> delegate, int tag)
        : Question(*this, title, std::move(delegate))
        , m_message(message.left(maxMessageLength))
        , m_buttons(buttons)
        , m_tag(tag)
    {
    }

    const QString &message() const { return m_message; }
    const QStringList &buttons() const { return m_buttons; }
    int tag() const { return m_tag; }

private:
    QString m_message;
    QStringList m_buttons;
    int m_tag = 0;
};

} // namespace orvel
