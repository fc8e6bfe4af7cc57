#include "demo/StreamSession.h"

#include "demo/IcyFraming.h"

#include <algorithm>
#include <utility>

namespace orvel::demo {

namespace {

using namespace std::chrono_literals;
using Kind = StreamFaults::Kind;

constexpr auto usualInterval = "16000";

QByteArray reason(int status)
{
    switch (status) {
    case 404:
        return "Not Found";
    case 405:
        return "Method Not Allowed";
    case 500:
        return "Internal Server Error";
    case 503:
        return "Service Unavailable";
    default:
        return "Demo";
    }
}

// The number a text begins with, as far as it makes an interval that can be kept; 0 otherwise.
qint64 leadingNumber(const QByteArray &text)
{
    const auto end = std::ranges::find_if(text, [](char c) { return c < '0' || c > '9'; });
    const qint64 number = text.first(end - text.begin()).toLongLong();
    return number <= 1'000'000'000 ? number : 0;
}

} // namespace

StreamSession::StreamSession(Connection &connection, const StreamSettings &settings, QString siteUrl)
    : m_connection(connection), m_settings(settings), m_siteUrl(std::move(siteUrl))
{
}

void StreamSession::serve(const FindChannel &findChannel, const std::stop_token &stop)
{
    const auto request = StreamRequest::read(m_connection);
    if (!request)
        return;
    m_faults = StreamFaults::of(request->query);
    Channel *channel = findChannel(request->path);
    if (!channel)
        sendStatus(404);
    else if (request->method != "GET")
        sendStatus(405);
    else if (m_faults.status && *m_faults.status != 200)
        sendStatus(*m_faults.status);
    else if (channel->programme().answer == Answer::Offline && !m_faults.status)
        sendStatus(503);
    else if (m_faults.kind == Kind::Html)
        sendPage();
    else
        stream(*channel, request->headers.value("icy-metadata") == "1", stop);
}

void StreamSession::stream(Channel &channel, bool wantsMetadata, const std::stop_token &stop)
{
    const QByteArray interval =
        wantsMetadata ? m_faults.metadataInterval.value_or(usualInterval) : QByteArray();
    const QByteArray answer = head(channel.programme(), interval);
    if (m_faults.kind == Kind::Header) {
        if (m_connection.send(answer.first(answer.size() / 2)))
            m_connection.stayForGood();
        return;
    }
    if (!sendHead(answer))
        return;
    if (m_faults.paced.value_or(m_settings.paced)) {
        Channel::Listener listener(channel, m_faults.burst.value_or(m_settings.burst));
        sendFrames([&] { return listener.next(stop); }, leadingNumber(interval));
    } else if (const auto encoder = Encoder::open(channel.programme(), 0)) {
        const auto next = [&] {
            return stop.stop_requested() ? nullptr : std::make_shared<const Frame>(encoder->next());
        };
        sendFrames(next, leadingNumber(interval));
    }
}

void StreamSession::sendFrames(const NextFrame &next, qint64 interval)
{
    IcyFraming framing(interval);
    double seconds = 0;
    while (!m_faults.seconds || seconds < *m_faults.seconds) {
        const auto frame = next();
        if (!frame || frame->bytes.isEmpty())
            return;
        seconds += frame->seconds;
        const QByteArray audio = m_faults.kind == Kind::Garbage ? garbage(frame->bytes.size()) : frame->bytes;
        if (!sendBody(framing.framed(audio, frame->title)))
            return;
    }
}

bool StreamSession::sendBody(QByteArrayView bytes)
{
    if (m_faults.kind == Kind::Slow)
        return sendSlowly(bytes);
    const bool breaks =
        m_faults.kind == Kind::Stall || m_faults.kind == Kind::Cut || m_faults.kind == Kind::Reset;
    const bool last = breaks && m_bodySent + bytes.size() >= m_faults.after;
    if (last)
        bytes = bytes.first(qsizetype(m_faults.after - m_bodySent));
    if (!m_connection.send(bytes))
        return false;
    m_bodySent += bytes.size();
    if (last && m_faults.kind == Kind::Stall)
        m_connection.stayForGood();
    if (last && m_faults.kind == Kind::Reset)
        m_connection.reset();
    return !last;
}

bool StreamSession::sendSlowly(QByteArrayView bytes)
{
    constexpr qsizetype piece = 1024;
    while (!bytes.isEmpty()) {
        const qsizetype size = std::min(piece - m_bodySent % piece, bytes.size());
        if (!m_connection.send(bytes.first(size)))
            return false;
        m_bodySent += size;
        bytes = bytes.sliced(size);
        if (m_bodySent % piece == 0 && !m_connection.stay(1s))
            return false;
    }
    return true;
}

bool StreamSession::sendHead(const QByteArray &head)
{
    const qsizetype piece = m_faults.piece > 0 ? m_faults.piece : head.size();
    for (qsizetype at = 0; at < head.size(); at += piece) {
        if (at > 0 && !m_connection.stay(20ms))
            return false;
        if (!m_connection.send(QByteArrayView(head).sliced(at, std::min(piece, head.size() - at))))
            return false;
    }
    return true;
}

void StreamSession::sendStatus(int status)
{
    sendHead("HTTP/1.0 " + QByteArray::number(status) + ' ' + reason(status) +
             "\r\nContent-Type: text/plain; charset=utf-8\r\nConnection: close\r\n\r\n"
             "Cette radio n'est pas à l'antenne.\r\n");
}

void StreamSession::sendPage()
{
    const QByteArray body = "<!DOCTYPE html><html lang=\"fr\"><title>Accès au réseau</title>"
                            "<p>Veuillez vous identifier pour accéder au réseau.</p></html>\n";
    sendHead("HTTP/1.0 200 OK\r\nContent-Type: " + m_faults.contentType.value_or("text/html; charset=utf-8") +
             "\r\nConnection: close\r\n\r\n" + body);
}

QByteArray StreamSession::head(const Programme &programme, const QByteArray &interval) const
{
    const bool icy = m_faults.bareIcy.value_or(programme.answer == Answer::Icy);
    const QByteArray type = m_faults.contentType.value_or(programme.contentType);
    const QByteArray colon = icy ? ":" : ": "; // each as the servers that answer so write it
    QByteArray head =
        icy ? "ICY 200 OK\r\n" : "HTTP/1.0 200 OK\r\nConnection: close\r\nCache-Control: no-cache\r\n";
    head += (icy ? "content-type" : "Content-Type") + colon + type + "\r\n";
    head += "icy-name" + colon + programme.name.toUtf8() + "\r\n";
    head += "icy-genre" + colon + programme.genre.toUtf8() + "\r\n";
    head += "icy-url" + colon + m_siteUrl.toUtf8() + "\r\n";
    head += "icy-br" + colon + QByteArray::number(programme.kbps) + "\r\n";
    head += "icy-pub" + colon + "0\r\n";
    if (!interval.isNull())
        head += "icy-metaint" + colon + interval + "\r\n";
    return head + "\r\n";
}

QByteArray StreamSession::garbage(qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (char &byte : bytes) {
        m_random = m_random * 1664525U + 1013904223U;
        byte = char(m_random >> 24);
    }
    return bytes;
}

} // namespace orvel::demo
