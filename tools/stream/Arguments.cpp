#include "tools/stream/Arguments.h"

#include <QCommandLineParser>
#include <QUrl>
#include <algorithm>
#include <array>
#include <cmath>

namespace orvel {

namespace {

using Task = Arguments::Task;

struct TaskRule
{
    const char *name;
    Task task;
    int arguments;
    QStringList options;
};

const std::array<TaskRule, 5> &taskRules()
{
    static const std::array<TaskRule, 5> rules{{
        {"resolve", Task::Resolve, 1, {"json", "deadline"}},
        {"play", Task::Play, 1, {"json", "seconds", "volume", "buffer"}},
        {"probe", Task::Probe, 1, {"json", "deadline"}},
        {"record", Task::Record, 2, {"json", "seconds"}},
        {"file", Task::File, 1, {"json", "seconds", "seek"}},
    }};
    return rules;
}

Outcome usage(const QString &sentence)
{
    return Outcome::failure(ExitCode::Usage, sentence + QStringLiteral(" Try --help."));
}

// An option's number within bounds. False when it is none; an option that is not there leaves `number`.
template<typename Number>
bool read(const QCommandLineParser &parser, const QString &option, double min, double max, Number &number)
{
    if (!parser.isSet(option))
        return true;
    bool isNumber = false;
    const double value = parser.value(option).toDouble(&isNumber);
    number = Number(0);
    if (!isNumber || !(value >= min && value <= max))
        return false;
    if constexpr (std::is_same_v<Number, std::optional<unsigned>>) {
        number = unsigned(value);
        return std::trunc(value) == value;
    } else if constexpr (std::is_same_v<Number, std::optional<float>>) {
        number = float(value);
    } else {
        number = value;
    }
    return true;
}

std::optional<Url> stationUrl(const QString &text)
{
    const std::optional<Url> url = Url::fromText(text);
    const bool isWeb = url && (url->scheme() == u"http" || url->scheme() == u"https");
    return isWeb && !QUrl(text).host().isEmpty() ? url : std::nullopt;
}

std::optional<QString> readOptions(const QCommandLineParser &parser, Arguments &arguments)
{
    constexpr double shortest = 0.001;
    constexpr double aYear = 366.0 * 86400;
    arguments.json = parser.isSet(QStringLiteral("json"));
    if (!read(parser, QStringLiteral("seconds"), shortest, aYear, arguments.seconds))
        return QStringLiteral("--seconds takes a number from 0.001 to 31622400.");
    if (!read(parser, QStringLiteral("seek"), 0, aYear, arguments.seek))
        return QStringLiteral("--seek takes a number from 0 to 31622400.");
    if (!read(parser, QStringLiteral("deadline"), shortest, aYear, arguments.deadline))
        return QStringLiteral("--deadline takes a number from 0.001 to 31622400.");
    if (!read(parser, QStringLiteral("volume"), 0, 1, arguments.volume))
        return QStringLiteral("--volume takes a number from 0 to 1.");
    if (!read(parser, QStringLiteral("buffer"), 1, 30, arguments.bufferSeconds))
        return QStringLiteral("--buffer takes a whole number from 1 to 30.");
    return std::nullopt;
}

} // namespace

std::variant<Arguments, Outcome> Arguments::of(const QStringList &commandLine)
{
    QCommandLineParser parser;
    // "-json" is a mistyped "--json", not five options.
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.addOptions({{{"h", "help"}, {}}, {{"v", "version"}, {}}, {"json", {}}});
    for (const char *name : {"seconds", "seek", "volume", "buffer", "deadline"})
        parser.addOption({QString::fromLatin1(name), {}, QStringLiteral("number")});
    if (!parser.parse(commandLine))
        return usage(parser.errorText());
    if (parser.isSet(QStringLiteral("help")))
        return Arguments{.task = Task::Help};
    if (parser.isSet(QStringLiteral("version")))
        return Arguments{.task = Task::Version};

    const QStringList words = parser.positionalArguments();
    if (words.isEmpty())
        return usage(QStringLiteral("What is to be done: resolve, play, probe, record or file?"));
    const auto rule = std::find_if(taskRules().begin(), taskRules().end(),
                                   [&](const TaskRule &it) { return words[0] == QLatin1String(it.name); });
    if (rule == taskRules().end())
        return usage(QStringLiteral("There is no command \"%1\".").arg(words[0]));
    if (words.size() != 1 + rule->arguments)
        return usage(rule->arguments == 1 ? QStringLiteral("%1 takes a URL.").arg(words[0])
                                          : QStringLiteral("%1 takes a URL and a file.").arg(words[0]));
    for (const QString &option : parser.optionNames())
        if (!rule->options.contains(option))
            return usage(QStringLiteral("%1 takes no --%2.").arg(words[0], option));

    Arguments arguments{.task = rule->task, .url = stationUrl(words[1])};
    if (!arguments.url)
        return usage(QStringLiteral("\"%1\" is no valid http:// or https:// URL.").arg(words[1]));
    if (rule->task == Task::Record)
        arguments.file = words[2];
    if (const std::optional<QString> wrong = readOptions(parser, arguments))
        return usage(*wrong);
    return arguments;
}

QString Arguments::help()
{
    return QStringLiteral(R"(Usage: orvel-stream COMMAND URL [OPTIONS]

Plays, probes and records one web radio, and plays one audio file, with the
libraries of the Orvel client.

Commands:
  resolve URL      print the stream behind a playlist (M3U, PLS, XSPF)
  play URL         play, and print states, station and titles as they come
  probe URL        print title, content type, extension and what the station
                   tells of itself
  record URL FILE  save the stream's bytes until Ctrl-C, --seconds or its end;
                   FILE gets the extension of the stream's format
  file URL         play one file (MP3, AAC, M4A, MP4, WAV, AIFF, AIFC, CAF), and
                   print states and progress

Options:
  --json              print JSON, one object a line
  --seconds N         play, record, file: end so many seconds after the start
  --seek N            file: go on at so many seconds as soon as its length is known
  --volume N          play: 0 to 1 (default 0.5)
  --buffer N          play: seconds of sound to gather first, 1 to 30 (default 3)
  --deadline N        resolve, probe: give up after so many seconds (default 20)
  -h, --help          print this
  -v, --version       print the version

Exit status:
  0 done           4 refused by the server    7 sound output failed
  2 wrong usage    5 playlist without stream  8 can't write
  3 unreachable    6 no sound in the stream   9 timed out
  130, 143 ended by Ctrl-C, SIGTERM)");
}

} // namespace orvel
