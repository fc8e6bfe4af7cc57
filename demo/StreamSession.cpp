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
    : connection_(connection), settings_(settings), siteUrl_(std::move(siteUrl))
{
}

void StreamSession::serve(const FindChannel &findChannel, const std::stop_token &stop)
{
    const auto request = StreamRequest::read(connection_);
    if (!request)
        return;
    faults_ = StreamFaults::of(request->query);
    Channel *channel = findChannel(request->path);
    if (!channel)
        sendStatus(404);
    else if (request->method != "GET")
        sendStatus(405);
    else if (faults_.status && *faults_.status != 200)
        sendStatus(*faults_.status);
    else if (channel->programme().answer == Answer::Offline && !faults_.status)
        sendStatus(503);
    else if (faults_.kind == Kind::Html)
        sendPage();
    else
        stream(*channel, request->headers.value("icy-metadata") == "1", stop);
}

void StreamSession::stream(Channel &channel, bool wantsMetadata, const std::stop_token &stop)
{
    const QByteArray interval =
        wantsMetadata ? faults_.metadataInterval.value_or(usualInterval) : QByteArray();
    const QByteArray answer = head(channel.programme(), interval);
    if (faults_.kind == Kind::Header) {
        if (connection_.send(answer.first(answer.size() / 2)))
            connection_.stayForGood();
        return;
    }
    if (!sendHead(answer))
        return;
    if (faults_.paced.value_or(settings_.paced)) {
        Channel::Listener listener(channel, faults_.burst.value_or(settings_.burst));
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
    while (!faults_.seconds || seconds < *faults_.seconds) {
        const auto frame = next();
        if (!frame || frame->bytes.isEmpty())
            return;
        seconds += frame->seconds;
        const QByteArray audio = faults_.kind == Kind::Garbage ? garbage(frame->bytes.size()) : frame->bytes;
        if (!sendBody(framing.framed(audio, frame->title)))
            return;
    }
}

bool StreamSession::sendBody(QByteArrayView bytes)
{
    if (faults_.kind == Kind::Slow)
        return sendSlowly(bytes);
    const bool breaks =
        faults_.kind == Kind::Stall || faults_.kind == Kind::Cut || faults_.kind == Kind::Reset;
    const bool last = breaks && bodySent_ + bytes.size() >= faults_.after;
    if (last)
        bytes = bytes.first(qsizetype(faults_.after - bodySent_));
    if (!connection_.send(bytes))
        return false;
    bodySent_ += bytes.size();
    if (last && faults_.kind == Kind::Stall)
        connection_.stayForGood();
    if (last && faults_.kind == Kind::Reset)
        connection_.reset();
    return !last;
}

bool StreamSession::sendSlowly(QByteArrayView bytes)
{
    constexpr qsizetype piece = 1024;
    while (!bytes.isEmpty()) {
        const qsizetype size = std::min(piece - bodySent_ % piece, bytes.size());
        if (!connection_.send(bytes.first(size)))
            return false;
        bodySent_ += size;
        bytes = bytes.sliced(size);
        if (bodySent_ % piece == 0 && !connection_.stay(1s))
            return false;
    }
    return true;
}

bool StreamSession::sendHead(const QByteArray &head)
{
    const qsizetype piece = faults_.piece > 0 ? faults_.piece : head.size();
    for (qsizetype at = 0; at < head.size(); at += piece) {
        if (at > 0 && !connection_.stay(20ms))
            return false;
        if (!connection_.send(QByteArrayView(head).sliced(at, std::min(piece, head.size() - at))))
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
    sendHead("HTTP/1.0 200 OK\r\nContent-Type: " + faults_.contentType.value_or("text/html; charset=utf-8") +
             "\r\nConnection: close\r\n\r\n" + body);
}

QByteArray StreamSession::head(const Programme &programme, const QByteArray &interval) const
{
    const bool icy = faults_.bareIcy.value_or(programme.answer == Answer::Icy);
    const QByteArray type = faults_.contentType.value_or(programme.contentType);
    const QByteArray colon = icy ? ":" : ": "; // each as the servers that answer so write it
    QByteArray head =
        icy ? "ICY 200 OK\r\n" : "HTTP/1.0 200 OK\r\nConnection: close\r\nCache-Control: no-cache\r\n";
    head += (icy ? "content-type" : "Content-Type") + colon + type + "\r\n";
    head += "icy-name" + colon + programme.name.toUtf8() + "\r\n";
    head += "icy-genre" + colon + programme.genre.toUtf8() + "\r\n";
    head += "icy-url" + colon + siteUrl_.toUtf8() + "\r\n";
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
        random_ = random_ * 1664525U + 1013904223U;
        byte = char(random_ >> 24);
    }
    return bytes;
}

} // namespace orvel::demo
