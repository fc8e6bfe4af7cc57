#include "screens/radio/FavouriteQuestions.h"

#include "app/AppDelegate.h"
#include "app/GLOB.h"
#include "app/WebRadioEntry.h"
#include "platform/foundation/UserDefaults.h"

namespace orvel {

bool mayChangeFavourites(const QString &refusal, ViewController &presenter)
{
    if (UserDefaults::standardUserDefaults().boolForKey(QStringLiteral("user_save")) ||
        AppDelegate::shared().isLogin)
        return true;
    GLOB::glob_alert(refusal);
    GLOB::glob_login(presenter);
    return false;
}

void askToUnfavourite(const JsonValue &radio, std::weak_ptr<AlertViewDelegate> delegate, int row)
{
    Window::showAlert(GLOB::glob_isNULL(radio[WebRadioEntry::title]).text(),
                      QStringLiteral("Are you sure, you want to unfavourite?"),
                      {QStringLiteral("Cancel"), QStringLiteral("Yes")}, std::move(delegate), row);
}

} // namespace orvel
