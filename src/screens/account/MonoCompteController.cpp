#include "screens/account/MonoCompteController.h"

#include "app/AppDelegate.h"
#include "app/GLOB.h"
#include "platform/foundation/UserDefaults.h"
#include "screens/account/MonoCompteRegister.h"
#include "screens/account/UserIdentity.h"

namespace orvel {

Form MonoCompteController::form()
{
    return {
        .endpoint = QStringLiteral("login"),
        .checks = {emailIsValid(), isNotEmpty(txtPass, QStringLiteral("Please enter a valid password"))},
        .values = {{QStringLiteral("login"), &txtEmail}, {QStringLiteral("password"), &txtPass}},
        .error = FormError::UnderZero,
    };
}

void MonoCompteController::viewDidLoad()
{
    FormController::viewDidLoad();
    setChecked(false);
    btnCheck.setTarget([this](Button &) { acctionCheck(); });
}

void MonoCompteController::setChecked(bool checked)
{
    btnCheck.setBackgroundImage(checked ? QStringLiteral("check.png") : QStringLiteral("uncheck.png"));
    btnCheck.setTag(checked ? 1 : 0);
}

void MonoCompteController::acctionCheck() { setChecked(btnCheck.tag() == 0); }

void MonoCompteController::requestSucceeded(const JsonValue &content)
{
    UserDefaults &defaults = UserDefaults::standardUserDefaults();
    storeUserIdentity(content["user_id"], txtEmail.text());
    defaults.setObject(btnCheck.tag() == 1, QStringLiteral("user_save"));
    AppDelegate::shared().isLogin = true;
    defaults.synchronise();
    GLOB::glob_alert(QStringLiteral("User successfully Login."));
    emptyFields();
    dismissViewController(false);
}

void MonoCompteController::acctionRegister()
{
    presentViewController(std::make_shared<MonoCompteRegister>(), false);
}

void MonoCompteController::acctionMenu() { dismissViewController(false); }

} // namespace orvel
