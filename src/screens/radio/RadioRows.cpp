#include "screens/radio/RadioRows.h"

#include "app/AppDelegate.h"
#include "app/GLOB.h"
#include "platform/foundation/FormatText.h"
#include "platform/foundation/UserDefaults.h"

namespace orvel {

QString picturePath(const JsonValue &radio)
{
    return formatPath(radio["imageurl"].text(), radio["file"].text());
}

QString logoPath(const JsonValue &radio)
{
    return formatPath(radio["imageurl"].text(), radio["thumb_smartphone"].text());
}

QString nameOf(const JsonValue &radio) { return GLOB::glob_isNULL(radio["title"]).text(); }

void setImages(Button &button, const QString &name)
{
    button.setImage(name, ControlState::Normal);
    button.setImage(name, ControlState::Highlighted);
}

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
    Window::showAlert(nameOf(radio), QStringLiteral("Are you sure, you want to unfavourite?"),
                      {QStringLiteral("Cancel"), QStringLiteral("Yes")}, std::move(delegate), row);
}

} // namespace orvel
