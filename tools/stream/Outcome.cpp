#include "tools/stream/Outcome.h"

#include "audio/live/Streamer.h"

namespace orvel {

Outcome outcomeOf(const NetError &error)
{
    using Code = NetError::Code;
    switch (error.code) {
    case Code::TimedOut:
        return Outcome::failure(ExitCode::TimedOut, QStringLiteral("The server was silent for too long."));
    case Code::UnsupportedUrl:
        return Outcome::failure(ExitCode::Refused,
                                QStringLiteral("The server names an address that is not http or https."));
    case Code::TooManyRedirects:
        return Outcome::failure(ExitCode::Refused, QStringLiteral("The server redirects without end."));
    case Code::Other:
        return Outcome::failure(ExitCode::Refused,
                                QStringLiteral("The server's answer could not be understood."));
    case Code::CannotWriteToFile:
        return Outcome::failure(ExitCode::CannotWrite, error.localizedDescription);
    case Code::CannotFindHost:
        return Outcome::failure(ExitCode::Unreachable, QStringLiteral("There is no such host."));
    case Code::CannotConnect:
        return Outcome::failure(ExitCode::Unreachable, QStringLiteral("The server can't be reached."));
    case Code::NotSecure:
        return Outcome::failure(ExitCode::Unreachable,
                                QStringLiteral("The server can't be reached by a secure connection."));
    case Code::ConnectionLost:
        return Outcome::failure(ExitCode::Unreachable, QStringLiteral("The connection was lost."));
    case Code::Cancelled:
    case Code::NoNetwork:
        break;
    }
    return Outcome::failure(ExitCode::Unreachable, QStringLiteral("The network can't be reached."));
}

Outcome outcomeOfStatus(int statusCode)
{
    return Outcome::failure(ExitCode::Refused,
                            QStringLiteral("The server answered with status %1.").arg(statusCode));
}

Outcome outcomeOf(const Streamer &streamer)
{
    switch (streamer.radioError()) {
    case RadioErrorPlaylistParsing:
        return Outcome::failure(ExitCode::NoStream, QStringLiteral("The playlist names no stream."));
    case RadioErrorFileStreamGetProperty:
    case RadioErrorFileStreamOpen:
        return Outcome::failure(ExitCode::NoSound, QStringLiteral("The stream's format can't be played."));
    case RadioErrorAudioQueueCreate:
    case RadioErrorAudioQueueBufferAllocation:
    case RadioErrorAudioQueueEnqueue:
    case RadioErrorAudioQueueStart:
        return Outcome::failure(
            ExitCode::NoOutput,
            QStringLiteral("The sound output failed (error %1).").arg(int(streamer.radioError())));
    case RadioErrorNone:
    case RadioErrorNetworkError:
    case RadioErrorHostNotReachable:
        break;
    }
    if (streamer.httpStatusCode() >= 400)
        return outcomeOfStatus(streamer.httpStatusCode());
    if (streamer.networkError())
        return outcomeOf(*streamer.networkError());
    return Outcome::failure(ExitCode::Unreachable, QStringLiteral("The network can't be reached."));
}

} // namespace orvel
