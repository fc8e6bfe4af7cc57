#pragma once

#include "demo/SignatureCheck.h"

#include <map>
#include <optional>

namespace orvel::demo {

class Accounts;

// One service's signed API: POST requests below "/api/", answers in the envelope that clients read.
class StationApi
{
public:
    using Lists = std::map<QByteArray, QByteArray>;

    // `lists` holds the endpoints that always answer the same, by their path. `accounts` is nullptr for a
    // service without users.
    StationApi(KeyPair keys, Lists lists, Accounts *accounts);

    // nullopt when the request is not for the API.
    std::optional<WebAnswer> answer(const WebRequest &request) const;

private:
    WebAnswer endpoint(const QByteArray &path, const QByteArray &form) const;

    SignatureCheck m_check;
    Lists m_lists;
    Accounts *m_accounts;
};

} // namespace orvel::demo
