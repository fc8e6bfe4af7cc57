#include "platform/net/CurlSetup.h"

namespace orvel {

namespace {

constexpr long bufferSize = 64 * 1024;

// False when there is no memory left.
bool append(CurlList &list, const QByteArray &line)
{
    curl_slist *const longer = curl_slist_append(list.get(), line.constData());
    if (longer && !list)
        list.reset(longer); // else the list's head stays what it was
    return longer != nullptr;
}

// A line end or a zero inside a field would begin another one.
QByteArray wireText(const QString &text)
{
    QByteArray bytes = text.toUtf8();
    bytes.removeIf([](char c) { return c == '\r' || c == '\n' || c == '\0'; });
    return bytes;
}

// nullptr when there is no memory left.
CurlList headerList(const HeaderFields &fields)
{
    CurlList list;
    bool isWhole = append(list, "Expect:"); // never asks the server for leave to send a body
    if (!fields.value(QStringLiteral("Content-Type")))
        isWhole = append(list, "Content-Type:") && isWhole; // none is made up
    for (const HeaderFields::Field &field : fields.fields()) {
        const QByteArray value = wireText(field.value);
        // ";": sent without a value
        isWhole = append(list, wireText(field.name) + (value.isEmpty() ? ";" : ": " + value)) && isWhole;
    }
    return isWhole ? std::move(list) : CurlList();
}

// A station on this machine is never behind the user's proxy.
QByteArray hostsWithoutProxy()
{
    const QByteArray users =
        qEnvironmentVariableIsSet("no_proxy") ? qgetenv("no_proxy") : qgetenv("NO_PROXY");
    return users == "*" ? users : "127.0.0.1,localhost," + users;
}

void setMethod(CurlOptions &options, const std::optional<QByteArray> &post)
{
    if (!post)
        return;
    options.set(CURLOPT_POST, 1L);
    options.set(CURLOPT_POSTFIELDSIZE_LARGE, curl_off_t(post->size()));
    options.set(CURLOPT_POSTFIELDS, post->constData());
    options.set(CURLOPT_FRESH_CONNECT, 1L);
}

// Redirects are followed with all header fields, to any host: a signature proves the request's path and time,
// and holds no key.
void setRedirects(CurlOptions &options, const CurlDemand &demand, const QByteArray &url)
{
    options.set(CURLOPT_REDIR_PROTOCOLS_STR, mustStaySecure(demand, url) ? "https" : "http,https");
    options.set(CURLOPT_FOLLOWLOCATION, 1L);
    options.set(CURLOPT_MAXREDIRS, long(demand.request.maxRedirects));
    // 307 and 308 keep the method anyway; 303 asks for a GET.
    options.set(CURLOPT_POSTREDIR, long(CURL_REDIR_POST_301 | CURL_REDIR_POST_302));
}

} // namespace

bool mustStaySecure(const CurlDemand &demand, const QByteArray &url)
{
    return demand.post && url.toLower().startsWith("https:");
}

CurlList setUp(CurlOptions &options, const CurlDemand &demand, const QByteArray &url)
{
    options.set(CURLOPT_URL, url.constData());
    options.set(CURLOPT_PATH_AS_IS, 1L); // what was signed is what is sent
    options.set(CURLOPT_PROTOCOLS_STR, "http,https");
    setRedirects(options, demand, url);
    // An endless stream shares its connection with nothing.
    options.set(CURLOPT_HTTP_VERSION, long(CURL_HTTP_VERSION_1_1));
    options.set(CURLOPT_HTTP09_ALLOWED,
                long(demand.request.acceptsBareAnswer)); // "ICY 200 OK" is a body to curl
    if (demand.request.acceptsCompressed && !demand.request.headers.value(QStringLiteral("Accept-Encoding")))
        options.set(CURLOPT_ACCEPT_ENCODING, "gzip");
    options.set(CURLOPT_BUFFERSIZE, bufferSize);
    options.set(CURLOPT_NOPROXY, hostsWithoutProxy().constData());
    options.set(CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    if (!demand.request.verifiesServer) {
        options.set(CURLOPT_SSL_VERIFYPEER, 0L);
        options.set(CURLOPT_SSL_VERIFYHOST, 0L);
    }
    // Giving up during a name's resolution must not wait for the resolver's thread.
    options.set(CURLOPT_QUICK_EXIT, 1L);
    options.set(CURLOPT_NOSIGNAL, 1L);
    setMethod(options, demand.post);
    CurlList headers = headerList(demand.request.headers);
    options.note(headers ? CURLE_OK : CURLE_OUT_OF_MEMORY);
    options.set(CURLOPT_HTTPHEADER, headers.get());
    return headers;
}

} // namespace orvel
