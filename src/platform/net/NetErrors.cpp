#include "platform/net/NetErrors.h"

#include "platform/foundation/Log.h"
#include "platform/net/NetworkInterfaces.h"

#include <cerrno>

namespace orvel {

namespace {

using Code = NetError::Code;

QString sentence(Code code)
{
    switch (code) {
    case Code::Cancelled:
        return QStringLiteral("La requête a été annulée.");
    case Code::TimedOut:
        return QStringLiteral("Le serveur met trop de temps à répondre.");
    case Code::CannotFindHost:
        return QStringLiteral("Le serveur est introuvable.");
    case Code::CannotConnect:
        return QStringLiteral("Le serveur ne répond pas.");
    case Code::NoNetwork:
        return QStringLiteral("Il n'y a pas de connexion à Internet.");
    case Code::ConnectionLost:
        return QStringLiteral("La connexion au serveur a été perdue.");
    case Code::UnsupportedUrl:
        return QStringLiteral("L'adresse demandée n'est pas valable.");
    case Code::TooManyRedirects:
        return QStringLiteral("Le serveur renvoie sans fin d'une adresse à une autre.");
    case Code::NotSecure:
        return QStringLiteral("La connexion n'est pas sûre : le certificat du serveur n'est pas valable.");
    case Code::CannotWriteToFile:
        return QStringLiteral("Le fichier n'a pas pu être enregistré.");
    case Code::Other:
        break;
    }
    return QStringLiteral("La réponse du serveur est incompréhensible.");
}

// Whether it is this machine that reaches nobody. A name can't be resolved then either.
bool isWithoutNetwork(CURLcode result, CURL *easy)
{
    long systemError = 0;
    curl_easy_getinfo(easy, CURLINFO_OS_ERRNO, &systemError);
    return systemError == ENETUNREACH || (result == CURLE_COULDNT_RESOLVE_HOST && !hasRouteToInternet());
}

} // namespace

NetError netError(Code code) { return {code, sentence(code)}; }

NetError netError(CURLcode result, CURL *easy)
{
    switch (result) {
    case CURLE_OPERATION_TIMEDOUT:
        return netError(Code::TimedOut);
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
        return netError(isWithoutNetwork(result, easy) ? Code::NoNetwork : Code::CannotFindHost);
    case CURLE_COULDNT_CONNECT:
        return netError(isWithoutNetwork(result, easy) ? Code::NoNetwork : Code::CannotConnect);
    case CURLE_RECV_ERROR:
    case CURLE_SEND_ERROR:
    case CURLE_GOT_NOTHING:
    case CURLE_PARTIAL_FILE:
        return netError(Code::ConnectionLost);
    case CURLE_URL_MALFORMAT:
    case CURLE_UNSUPPORTED_PROTOCOL:
        return netError(Code::UnsupportedUrl);
    case CURLE_TOO_MANY_REDIRECTS:
        return netError(Code::TooManyRedirects);
    case CURLE_PEER_FAILED_VERIFICATION:
        return netError(Code::NotSecure);
    case CURLE_SSL_CONNECT_ERROR:
        return {Code::NotSecure, QStringLiteral("La connexion sécurisée au serveur a échoué.")};
    default: // an answer over its bounds or badly packed, no memory
        qCWarning(logNet) << "A transfer failed:" << curl_easy_strerror(result);
        return netError(Code::Other);
    }
}

} // namespace orvel
