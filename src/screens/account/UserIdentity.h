#pragma once

#include "api/json/JsonValue.h"

namespace orvel {

// Keeps who the user is in the settings: "user_id" as the server gave it, a text or a number (without one, or
// with one beyond all reason, the key is cleared), and "user_email". Reaches the disk with the settings' next
// synchronise().
void storeUserIdentity(const JsonValue &userId, const QString &email);

} // namespace orvel
