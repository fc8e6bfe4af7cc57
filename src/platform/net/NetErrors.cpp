#include "platform/net/NetErrors.h"

namespace orvel {

NetError netError(NetError::Code code)
{
    using Code = NetError::Code;
    switch (code) {
    case Code::Cancelled:
        return {code, QStringLiteral("The request was cancelled.")};
    case Code::TimedOut:
        return {code, QStringLiteral("The request timed out.")};
    case Code::CannotFindHost:
        return {code, QStringLiteral("A server with the specified hostname could not be found.")};
    case Code::CannotConnect:
        return {code, QStringLiteral("Could not connect to the server.")};
    case Code::ConnectionLost:
        return {code, QStringLiteral("The network connection was lost.")};
    case Code::UnsupportedUrl:
        return {code, QStringLiteral("unsupported URL")};
    case Code::TooManyRedirects:
        return {code, QStringLiteral("too many HTTP redirects")};
    case Code::CannotWriteToFile:
        return {code, QStringLiteral("The file could not be written.")};
    case Code::Other:
        break;
    }
    return {code, QStringLiteral("The server's answer could not be understood.")};
}

NetError netError(CURLcode result)
{
    using Code = NetError::Code;
    switch (result) {
    case CURLE_OPERATION_TIMEDOUT:
        return netError(Code::TimedOut);
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
        return netError(Code::CannotFindHost);
    case CURLE_COULDNT_CONNECT:
        return netError(Code::CannotConnect);
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
    case CURLE_SSL_CONNECT_ERROR:
        return {Code::Other,
                QStringLiteral(
                    "An SSL error has occurred and a secure connection to the server cannot be made.")};
    case CURLE_WRITE_ERROR:   // a header over its bounds, ours
    case CURLE_OUT_OF_MEMORY: // or curl's
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_BAD_CONTENT_ENCODING:
        return netError(Code::Other);
    default:
        return {Code::Other, QString::fromLatin1(curl_easy_strerror(result)) + u'.'};
    }
}

} // namespace orvel
