#include "platform/net/CurlSetup.h"

namespace orvel {

namespace {

constexpr long bufferSize = 64 * 1024;
constexpr long mostRedirects = 20;

void append(CurlList &list, const QByteArray &line)
{
    if (curl_slist *longer = curl_slist_append(list.get(), line.constData())) {
        static_cast<void>(list.release());
        list.reset(longer);
    }
}

// A line end or a zero inside a field would begin another one.
QByteArray wireText(const QString &text)
{
    QByteArray bytes = text.toUtf8();
    bytes.removeIf([](char c) { return c == '\r' || c == '\n' || c == '\0'; });
    return bytes;
}

CurlList headerList(const HeaderFields &fields)
{
    CurlList list;
    for (const HeaderFields::Field &field : fields.fields()) {
        const QByteArray value = wireText(field.value);
        append(list,
               wireText(field.name) + (value.isEmpty() ? ";" : ": " + value)); // ";": sent without a value
    }
    append(list, "Expect:"); // never asks the server for leave to send a body
    if (!fields.value(QStringLiteral("Content-Type")))
        append(list, "Content-Type:"); // none is made up
    return list;
}

// A station on this machine is never behind the user's proxy.
QByteArray hostsWithoutProxy()
{
    const QByteArray users =
        qEnvironmentVariableIsSet("no_proxy") ? qgetenv("no_proxy") : qgetenv("NO_PROXY");
    return users == "*" ? users : "127.0.0.1,localhost," + users;
}

void setMethod(CURL *easy, const CurlDemand &demand)
{
    if (demand.method == "GET") {
        curl_easy_setopt(easy, CURLOPT_HTTPGET, 1L);
        return;
    }
    curl_easy_setopt(easy, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(demand.body.size()));
    curl_easy_setopt(easy, CURLOPT_POSTFIELDS, demand.body.constData());
    if (demand.method != "POST")
        curl_easy_setopt(easy, CURLOPT_CUSTOMREQUEST, demand.method.constData());
}

} // namespace

CurlList setUp(CURL *easy, const CurlDemand &demand, const QByteArray &url)
{
    curl_easy_setopt(easy, CURLOPT_URL, url.constData());
    curl_easy_setopt(easy, CURLOPT_PATH_AS_IS, 1L); // what was signed is what is sent
    curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(easy, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(easy, CURLOPT_MAXREDIRS, mostRedirects);
    // An endless stream shares its connection with nothing.
    curl_easy_setopt(easy, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    curl_easy_setopt(easy, CURLOPT_HTTP09_ALLOWED, 1L); // "ICY 200 OK" is a body to curl
    if (!demand.request.headers.value(QStringLiteral("Accept-Encoding")))
        curl_easy_setopt(easy, CURLOPT_ACCEPT_ENCODING, "gzip");
    curl_easy_setopt(easy, CURLOPT_BUFFERSIZE, bufferSize);
    curl_easy_setopt(easy, CURLOPT_NOPROXY, hostsWithoutProxy().constData());
    curl_easy_setopt(easy, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    // Giving up during a name's resolution must not wait for the resolver's thread.
    curl_easy_setopt(easy, CURLOPT_QUICK_EXIT, 1L);
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    setMethod(easy, demand);
    CurlList headers = headerList(demand.request.headers);
    curl_easy_setopt(easy, CURLOPT_HTTPHEADER, headers.get());
    return headers;
}

} // namespace orvel
