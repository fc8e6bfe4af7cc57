#pragma once

#include "api/json/JsonValue.h"

namespace orvel {

// Sets "user_email" in the settings, and "user_id" as the server sent it, a text or a number. Removes
// "user_id" when it is neither, or a text of more than 64 Ki characters. Does not synchronise the settings.
void storeUserIdentity(const JsonValue &userId, const QString &email);

} // namespace orvel
