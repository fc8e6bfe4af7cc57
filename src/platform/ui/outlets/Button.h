#pragma once

#include "platform/ui/outlets/View.h"

#include <QString>
#include <functional>

namespace orvel {

enum class ControlState { Normal, Highlighted };

// A button: its images by state are names of the application's assets ("pstop.png").
class Button : public orvel::View
{
    Q_OBJECT
    QML_NAMED_ELEMENT(ButtonOutlet)
    QML_UNCREATABLE("Outlets belong to their screen")
public:
    using Action = std::function<void(Button &sender)>;
    Button() = default;

    void setImage(const QString &name, ControlState state);
    // Sets what touch-up-inside calls, in place of an earlier action.
    void setTarget(Action action) { m_action = std::move(action); }
    // Layouts call it when the button is clicked, by whatever means. No effect while the button is disabled
    // or hidden, and without an action.
    Q_INVOKABLE void touchUpInside();

    OUTLET_VALUE(bool, enabled, setEnabled) = true;
    OUTLET_VALUE(QString, title, setTitle);
    OUTLET_VALUE(QString, normalImage, setNormalImage);
    OUTLET_VALUE(QString, highlightedImage, setHighlightedImage);
    OUTLET_VALUE(QString, backgroundImage, setBackgroundImage);
    Action m_action;
};

} // namespace orvel
