#pragma once

#include "screens/base/FormController.h"

namespace orvel {

// The newsletter's subscription form.
// Deliberate: `txtPass` takes the subscriber's name (AccountFormsTest.SubscribesToTheNewsletterOnce).
class NewsLetterController : public orvel::FormController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are made by name in C++")

public:
    Q_INVOKABLE void acctionMenu();

protected:
    Form form() override;
    void requestSucceeded(const JsonValue &content) override;
};

} // namespace orvel
