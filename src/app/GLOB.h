#pragma once

#include "api/json/JsonValue.h"

#include <QString>
#include <QStringList>
#include <memory>
#include <optional>
#include <vector>

namespace orvel {

class ViewController;

// What every screen calls. Nothing here keeps state.
class GLOB
{
public:
    // An alert titled "Alert" with the button "OK".
    static void glob_alert(const QString &message);
    // True when the whole text looks like an e-mail address with a top-level domain of 2 to 4 letters.
    static bool glob_validateEmailWithString(const QString &text);
    // Base64 of the HMAC-SHA1 of an ASCII text.
    static QString glob_hmacsha1(const QString &text, const QString &secret);
    // Seconds since 1 January 1970, rounded to a whole number.
    static QString glob_CurrentTime();
    // Shows or hides the progress overlay on a later turn of the main queue, in the order of the calls. Input
    // is swallowed from glob_ShowHud() on when that is called on the main thread. Any thread.
    static void glob_ShowHud();
    static void glob_HideHud();
    // How many elements, as text.
    static QString glob_GetCout(const JsonValue &array);
    // The favourite radios as stored; nothing when none were ever stored, an empty array when what is stored
    // holds none.
    static std::optional<std::vector<JsonValue>> glob_favArray();
    // The value itself; an empty text for nothing and for a JSON null.
    static JsonValue glob_isNULL(const JsonValue &value);
    // Presents the login form over a screen.
    static void glob_login(ViewController &presenter);
    // Returns "Aujourd'hui" and the 30 days after it as "mar. 24", in French in any locale.
    static QStringList glob_getNext30Days();
};

// Says in one sentence that a screen is not there yet.
void showNotThereYet();
// Pushes the side panel open again with the menu in it.
void backToMenu();
// Hands a page or a telephone number over to the system; says `failure` when nobody takes it.
void openOutside(const QString &url, const QString &failure);

} // namespace orvel
