#pragma once

#include "platform/ui/outlets/View.h"

#include <QString>
#include <functional>

namespace orvel {

// A field of one line of text. Layouts write the text back and report when editing begins and ends.
class TextField : public orvel::View
{
    Q_OBJECT
    QML_NAMED_ELEMENT(TextFieldOutlet)
    QML_UNCREATABLE("Outlets belong to their screen")
public:
    using Action = std::function<void(TextField &sender)>;
    TextField() = default;

    void setDidBeginEditing(Action action) { m_didBeginEditing = std::move(action); }
    void setDidEndEditing(Action action) { m_didEndEditing = std::move(action); }
    void setShouldReturn(Action action) { m_shouldReturn = std::move(action); }

    // Ask the layout to take the keyboard, or to give it up.
    void becomeFirstResponder() { Q_EMIT focusWanted(true); }
    void resignFirstResponder() { Q_EMIT focusWanted(false); }

    // Layouts call them: when the field gets and loses the keyboard, and at the Return key.
    Q_INVOKABLE void beginEditing() { run(m_didBeginEditing); }
    Q_INVOKABLE void endEditing() { run(m_didEndEditing); }
    Q_INVOKABLE void returnKey() { run(m_shouldReturn); }

Q_SIGNALS:
    void focusWanted(bool wanted);

private:
    // A copy: the action may end the screen that owns this field.
    void run(const Action &action)
    {
        if (const Action copy = action)
            copy(*this);
    }
    Action m_didBeginEditing;
    Action m_didEndEditing;
    Action m_shouldReturn;

    OUTLET_VALUE(QString, text, setText) = QStringLiteral("");
    // The image at the field's left side, an inset. An empty text: no image.
    OUTLET_VALUE(QString, leftImage, setLeftImage);
};

} // namespace orvel
