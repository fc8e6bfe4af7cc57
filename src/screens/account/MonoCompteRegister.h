#pragma once

#include "screens/base/FormController.h"

#include <QHash>

namespace orvel {

// The registration form. On a low screen it moves up while a field is edited, so that the keyboard does not
// cover the field.
class MonoCompteRegister : public orvel::FormController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are made by name in C++")
    // The whole screen; its layout writes the frame's size back, and moves by `lift`.
    OUTLET(View, view);
    OUTLET(TextField, txtIdentity);

public:
    Q_INVOKABLE void acctionBack();
    // Opens the side menu beneath this screen, where it is not seen: the layout has no control for it.
    Q_INVOKABLE void acctionMenu();
    void textFieldDidBeginEditing(const TextField &field);
    void textFieldDidEndEditing(const TextField &field);

protected:
    void viewDidLoad() override;
    Form form() override;
    void requestSucceeded(const JsonValue &content) override;

private:
    // Points that each field being edited has moved the screen by. The screen goes back as far, also when the
    // window was turned or resized meanwhile.
    QHash<const TextField *, int> m_distances;

    // Points that the screen stands above its place.
    OUTLET_VALUE(int, lift, setLift) = 0;
};

} // namespace orvel
