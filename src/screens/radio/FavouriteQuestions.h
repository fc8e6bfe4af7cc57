#pragma once

#include "api/json/JsonValue.h"
#include "platform/ui/containers/AlertView.h"

namespace orvel {

class ViewController;

// What is asked before a favourite is added or removed.

// Returns whether the user is logged in or remembered. Otherwise shows `refusal` in an alert and presents the
// login form over `presenter`.
bool mayChangeFavourites(const QString &refusal, ViewController &presenter);

// Asks whether the radio is to be a favourite no longer. The delegate is called with an alert whose tag is
// `row`.
void askToUnfavourite(const JsonValue &radio, std::weak_ptr<AlertViewDelegate> delegate, int row);
// The index of the button "Yes".
constexpr int unfavouriteButton = 1;

} // namespace orvel
