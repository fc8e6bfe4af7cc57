#include "screens/account/MonoCompteRegister.h"

#include "app/GLOB.h"
#include "platform/foundation/UserDefaults.h"
#include "screens/account/UserIdentity.h"

namespace orvel {

namespace {

constexpr double lowScreen = 490;
// Where the edited field's foot comes to stand.
constexpr double footOfField = 90;

} // namespace

Form MonoCompteRegister::form()
{
    return {
        .endpoint = QStringLiteral("register"),
        .checks = {isNotEmpty(txtIdentity, QStringLiteral("Please enter the user name")), emailIsValid(),
                   isNotEmpty(txtPass, QStringLiteral("Please enter a valid password"))},
        .values = {{QStringLiteral("username"), &txtIdentity},
                   {QStringLiteral("email"), &txtEmail},
                   {QStringLiteral("password"), &txtPass}},
        .error = FormError::AtTop,
    };
}

void MonoCompteRegister::viewDidLoad()
{
    FormController::viewDidLoad();
    prepareField(txtIdentity);
    for (TextField *field : {&txtIdentity, &txtEmail, &txtPass}) {
        field->setDidBeginEditing([this](TextField &sender) { textFieldDidBeginEditing(sender); });
        field->setDidEndEditing([this](TextField &sender) { textFieldDidEndEditing(sender); });
    }
}

void MonoCompteRegister::textFieldDidBeginEditing(const TextField &field)
{
    if (view.frame().height() >= lowScreen)
        return;
    const int distance = int(field.frame().top() + field.frame().height() - footOfField);
    m_distances.insert(&field, distance);
    setLift(lift() + distance);
}

void MonoCompteRegister::textFieldDidEndEditing(const TextField &field)
{
    setLift(lift() - m_distances.take(&field));
}

void MonoCompteRegister::requestSucceeded(const JsonValue &content)
{
    storeUserIdentity(content["user_id"], txtEmail.text());
    UserDefaults::standardUserDefaults().synchronise();
    GLOB::glob_alert(QStringLiteral("User successfully register."));
    acctionBack();
}

void MonoCompteRegister::acctionBack() { dismissViewController(false); }

void MonoCompteRegister::acctionMenu() { backToMenu(); }

} // namespace orvel
