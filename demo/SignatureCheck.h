#pragma once

#include "demo/WebServer.h"

namespace orvel::demo {

struct KeyPair
{
    QByteArray signing; // never sent
    QByteArray open;    // sent with each request
};

// Checks that a request comes from a client of this service: it carries the public key, the time, and the
// HMAC-SHA1 of endpoint path and time under the signing key.
class SignatureCheck
{
public:
    static constexpr qint64 toleranceSeconds = 300;

    explicit SignatureCheck(KeyPair keys);

    // Returns what is wrong with the request, as a sentence for a person; empty when it is accepted. `now` is
    // in seconds since 1 January 1970.
    QString refusal(const WebRequest &request, const QByteArray &endpoint, qint64 now) const;

private:
    KeyPair m_keys;
};

} // namespace orvel::demo
