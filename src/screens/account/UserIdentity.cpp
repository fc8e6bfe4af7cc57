#include "screens/account/UserIdentity.h"

#include "platform/foundation/UserDefaults.h"

namespace orvel {

namespace {

// Far above any id. A server that sends more is not to slow down every start.
constexpr qsizetype maxIdLength = 64 * 1024;

} // namespace

void storeUserIdentity(const JsonValue &userId, const QString &email)
{
    UserDefaults &defaults = UserDefaults::standardUserDefaults();
    const QString idKey = QStringLiteral("user_id");
    const qint64 whole = userId.integerValue();
    if (userId.isNumber() && userId == JsonValue(whole))
        defaults.setObject(whole, idKey);
    else if ((userId.isNumber() || userId.isString()) && userId.text().size() <= maxIdLength)
        defaults.setObject(userId.text(), idKey);
    else
        defaults.removeObjectForKey(idKey);
    defaults.setObject(email, QStringLiteral("user_email"));
}

} // namespace orvel
