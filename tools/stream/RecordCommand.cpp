#include "tools/stream/RecordCommand.h"

#include <QFile>
#include <QFileInfo>
#include <climits>

namespace orvel {

namespace {

// A sentence with a place for the name; empty when a file of that name can be made.
QString whatIsWrongWith(const QString &path)
{
    const QFileInfo file(path);
    if (file.isDir() || file.fileName().isEmpty())
        return QStringLiteral("\"%1\" names no file.");
    if (file.exists() && !file.isFile())
        return QStringLiteral("\"%1\" is no plain file.");
    // With room for another extension. The system would only tell at the end of the recording.
    if (QFile::encodeName(file.fileName()).size() > NAME_MAX - 5)
        return QStringLiteral("\"%1\" is too long a name.");
    const QFileInfo folder(file.absolutePath());
    if (!folder.isDir())
        return QStringLiteral("\"%1\" can't be written: there is no such folder.");
    if (!folder.isWritable())
        return QStringLiteral("\"%1\" can't be written: its folder can't be written to.");
    return {};
}

} // namespace

void RecordCommand::start()
{
    // Known before the first byte is fetched.
    if (const QString wrong = whatIsWrongWith(arguments().file); !wrong.isEmpty()) {
        finish(Outcome::failure(ExitCode::CannotWrite, wrong.arg(arguments().file)));
        return;
    }
    if (arguments().seconds)
        after(*arguments().seconds, [this] {
            stop({}, Outcome::failure(ExitCode::TimedOut, QStringLiteral("The server has sent nothing.")));
        });
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
            stop({}, Outcome::failure(ExitCode::NoSound,
                                      QStringLiteral("The stream ended before its first byte.")));
    });
    m_recorder->startRecordingFromUrl(url, arguments().file,
                                      [this](const NetError &error) { finish(outcomeOf(error)); });
}

void RecordCommand::stop(const Outcome &outcome, const Outcome &withoutAByte)
{
    if (std::exchange(m_isStopping, true))
        return;
    m_resolver->cancel();
    m_recorder->stopRecording([this, outcome, withoutAByte](const QString &path, const QString &error) {
        if (!error.isEmpty()) {
            finish(Outcome::failure(ExitCode::CannotWrite, error));
        } else if (path.isEmpty()) {
            finish(withoutAByte);
        } else if (QFileInfo(path).size() == 0) {
            QFile::remove(path);
            finish(withoutAByte);
        } else {
            output().result(QStringLiteral("file"), path);
            finish(outcome);
        }
    });
}

} // namespace orvel
