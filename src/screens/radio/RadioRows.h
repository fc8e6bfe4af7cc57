#pragma once

#include "api/json/JsonValue.h"
#include "platform/ui/containers/AlertView.h"
#include "platform/ui/outlets/Button.h"

namespace orvel {

class ViewController;

// What the lists of radios have in common.

constexpr double radioRowHeight = 60;

// An entry's "fav" names its icon, and so says whether the radio is a favourite.
inline const QString favIcon = QStringLiteral("list_fav_icon.png");
inline const QString favIconFull = QStringLiteral("list_fav_icon_full.png");

// Where an entry's large picture and its logo are.
QString picturePath(const JsonValue &radio);
QString logoPath(const JsonValue &radio);

// An entry's name; empty where it has none.
QString nameOf(const JsonValue &radio);

// One image for the normal and the highlighted state.
void setImages(Button &button, const QString &name);

// True for a user who is logged in or remembered. Anybody else is told `refusal` and shown the login form.
bool mayChangeFavourites(const QString &refusal, ViewController &presenter);

// Asks whether the radio is to be a favourite no longer; the delegate is told with the row as the alert's
// tag.
void askToUnfavourite(const JsonValue &radio, std::weak_ptr<AlertViewDelegate> delegate, int row);
// The button that says yes.
constexpr int unfavouriteButton = 1;

} // namespace orvel
