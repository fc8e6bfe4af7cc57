#include "tools/stream/RecordCommand.h"

#include <QFileInfo>

namespace orvel {

void RecordCommand::start()
{
    // Known before the first byte is fetched.
    const QFileInfo folder(QFileInfo(arguments().file).absolutePath());
    if (!folder.isDir() || !folder.isWritable()) {
        finish(Outcome::failure(ExitCode::CannotWrite,
                                QStringLiteral("%1 can't be written.").arg(arguments().file)));
        return;
    }
    if (arguments().seconds)
        after(*arguments().seconds, [this] { stop({}); });
    m_resolver->resolve(*arguments().url, [this](const std::variant<Url, Outcome> &result) {
        if (const Url *url = std::get_if<Url>(&result))
            record(*url);
        else
            finish(std::get<Outcome>(result));
    });
}

void RecordCommand::record(const Url &url)
{
    m_recorder->setStreamEndedHandler([this](const UrlResponse &response) {
        if (response.statusCode >= 400)
            finish(outcomeOfStatus(response.statusCode)); // the server's explanation is no recording
        else
            stop({});
    });
    m_recorder->startRecordingFromUrl(url, arguments().file,
                                      [this](const NetError &error) { finish(outcomeOf(error)); });
}

void RecordCommand::stop(const Outcome &outcome)
{
    if (std::exchange(m_isStopping, true))
        return;
    m_resolver->cancel();
    m_recorder->stopRecording([this, outcome](const QString &path, const QString &error) {
        if (!error.isEmpty()) {
            finish(Outcome::failure(ExitCode::CannotWrite, error));
        } else if (!path.isEmpty()) {
            output().result(QStringLiteral("file"), path);
            finish(outcome);
        } else if (outcome.exitStatus != int(ExitCode::Done)) {
            finish(outcome);
        } else {
            finish(Outcome::failure(ExitCode::TimedOut, QStringLiteral("The server has sent nothing.")));
        }
    });
}

} // namespace orvel
