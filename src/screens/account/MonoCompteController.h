#pragma once

#include "platform/ui/outlets/Button.h"
#include "screens/base/FormController.h"

namespace orvel {

// The login form, with a box to be remembered by and a way to the registration form.
class MonoCompteController : public orvel::FormController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are made by name in C++")
    // Its tag is 1 when the user wants to be remembered.
    OUTLET(Button, btnCheck);

public:
    void acctionCheck();
    Q_INVOKABLE void acctionRegister();
    Q_INVOKABLE void acctionMenu();

protected:
    void viewDidLoad() override;
    Form form() override;
    void requestSucceeded(const JsonValue &content) override;

private:
    void setChecked(bool checked);
};

} // namespace orvel
