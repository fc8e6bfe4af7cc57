#include "api/Signature.h"

#include "platform/foundation/RunLoop.h"

#include <QMessageAuthenticationCode>

namespace orvel {

namespace {

QByteArray bytesToZero(const QString &text) { return QByteArray(text.toUtf8().constData()); }

} // namespace

QString glob_hmacsha1(const QString &text, const QString &secret)
{
    const QByteArray hash =
        QMessageAuthenticationCode::hash(bytesToZero(text), bytesToZero(secret), QCryptographicHash::Sha1);
    return QString::fromLatin1(hash.toBase64());
}

QString glob_CurrentTime() { return QString::asprintf("%.0f", RunLoop::main().secondsSince1970()); }

} // namespace orvel
