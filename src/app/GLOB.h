#pragma once

#include "api/json/JsonValue.h"

#include <QString>
#include <QStringList>
#include <memory>
#include <optional>
#include <vector>

namespace orvel {

class ViewController;

// What every screen calls. Keeps no state. Main thread, where nothing else is said.
class GLOB
{
public:
    // Shows an alert titled "Alert" with the button "OK".
    static void glob_alert(const QString &message);
    // Returns whether the whole text is an e-mail address with a top-level domain of 2 to 4 letters.
    // Deliberate: the rule of the forms refuses longer domains (GLOBTest.ChecksAddressesAsAWhole).
    static bool glob_validateEmailWithString(const QString &text);
    // Returns the base64 text of the HMAC-SHA1 of an ASCII text.
    static QString glob_hmacsha1(const QString &text, const QString &secret);
    // Returns the seconds since 1 January 1970, rounded to a whole number.
    static QString glob_CurrentTime();
    // Shows or hides the progress overlay on a later turn of the main queue, in the order of the calls. Input
    // is swallowed from glob_ShowHud() on when that is called on the main thread. Any thread.
    static void glob_ShowHud();
    static void glob_HideHud();
    // Returns the number of elements as text.
    static QString glob_GetCout(const JsonValue &array);
    // Returns the favourite radios as stored: nullopt when none were ever stored, an empty array when what is
    // stored holds none.
    static std::optional<std::vector<JsonValue>> glob_favArray();
    // Returns the value itself, or an empty text for an absent value and for a JSON null.
    static JsonValue glob_isNULL(const JsonValue &value);
    // Presents the login form over a screen, without animation.
    static void glob_login(ViewController &presenter);
    // Returns "Aujourd'hui" and the 30 days after it as "mar. 24", in French in any locale.
    static QStringList glob_getNext30Days();
};

// Shows an alert that says that a screen is not there yet.
void showNotThereYet();
// Opens the side panel with the menu in it, animated.
void backToMenu();
// Hands a page or a telephone number over to the system. Shows `failure` in an alert when no program takes
// it.
void openOutside(const QString &url, const QString &failure);

} // namespace orvel
