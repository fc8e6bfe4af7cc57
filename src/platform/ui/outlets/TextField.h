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

    // Ask the layout to take the keyboard, or to give it up.
    void becomeFirstResponder() { Q_EMIT focusWanted(true); }
    void resignFirstResponder() { Q_EMIT focusWanted(false); }

Q_SIGNALS:
    void focusWanted(bool wanted);

    // When the field gets and loses the keyboard, and at the Return key.
    OUTLET_ACTION(beginEditing, setDidBeginEditing);
    OUTLET_ACTION(endEditing, setDidEndEditing);
    OUTLET_ACTION(returnKey, setShouldReturn);

    OUTLET_VALUE(QString, text, setText) = QStringLiteral("");
    // The image at the field's left side, an inset. An empty text: no image.
    OUTLET_VALUE(QString, leftImage, setLeftImage);
};

} // namespace orvel
