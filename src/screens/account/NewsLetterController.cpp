#include "screens/account/NewsLetterController.h"

#include "app/GLOB.h"

namespace orvel {

Form NewsLetterController::form()
{
    return {
        .endpoint = QStringLiteral("newsletter"),
        .checks = {emailIsValid(), isNotEmpty(txtPass, QStringLiteral("you must enter in field"))},
        .values = {{QStringLiteral("name"), &txtPass}, {QStringLiteral("email"), &txtEmail}},
        .error = FormError::UnderZero,
    };
}

void NewsLetterController::requestSucceeded(const JsonValue &content)
{
    // The server's own confirmation.
    GLOB::glob_alert(content.string());
    emptyFields();
    dismissViewController(false);
}

void NewsLetterController::acctionMenu() { dismissViewController(false); }

} // namespace orvel
