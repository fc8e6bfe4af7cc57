#include "tools/stream/ProbeCommand.h"

#include "audio/icy/StreamFileType.h"

#include <algorithm>
#include <functional>

namespace orvel {

void ProbeCommand::start()
{
    startDeadline([this](const Outcome &outcome) { end(outcome); });
    m_resolver->resolve(*arguments().url, [this](const std::variant<Url, Outcome> &result) {
        if (const Url *url = std::get_if<Url>(&result))
            probe(*url);
        else
            finish(std::get<Outcome>(result));
    });
}

// The type comes with the answer's head, the title a while later: each is asked for by itself, so that the
// first is known when the second never comes.
void ProbeCommand::probe(const Url &url)
{
    m_url = url.text();
    m_contentTypeGetter->getContentTypeFromUrl(url, [this](const QString &contentType, const QString &,
                                                           AudioFileType, const auto &,
                                                           const auto &) { m_contentType = contentType; });
    const auto told = std::bind_front(&ProbeCommand::answerCame, this);
    m_metadataGetter->setStreamEndedHandler(told);
    m_metadataGetter->getMetadataFromUrl(url, told);
}

void ProbeCommand::answerCame(const std::optional<MetadataDictionary> &dictionary,
                              const std::optional<UrlResponse> &response,
                              const std::optional<NetError> &error)
{
    if (response && response->statusCode >= 400) {
        finish(outcomeOfStatus(response->statusCode));
        return;
    }
    if (dictionary)
        metadataCame(*dictionary);
    if (error)
        end(outcomeOf(*error));
    else if (streamFileType(m_contentType).fileExtension.isNull())
        end(Outcome::failure(ExitCode::NoSound,
                             QStringLiteral("The server's answer is not sound in a known format.")));
    else
        end({});
}

void ProbeCommand::metadataCame(const MetadataDictionary &dictionary)
{
    const auto field = [&](const QString &name) {
        const auto found = std::find_if(dictionary.keyBegin(), dictionary.keyEnd(), [&](const QString &key) {
            return key.compare(name, Qt::CaseInsensitive) == 0;
        });
        return found == dictionary.keyEnd() ? QString() : dictionary.value(*found);
    };
    if (m_contentType.isEmpty())
        m_contentType = field(QStringLiteral("content-type"));
    m_station = {{QStringLiteral("title"), field(QStringLiteral("StreamTitle"))},
                 {QStringLiteral("name"), field(QStringLiteral("icy-name"))},
                 {QStringLiteral("genre"), field(QStringLiteral("icy-genre"))},
                 {QStringLiteral("site"), field(QStringLiteral("icy-url"))},
                 {QStringLiteral("bitrate"), field(QStringLiteral("icy-br"))},
                 {QStringLiteral("answer"), field(QStringLiteral("StreamResponceType"))}};
}

void ProbeCommand::end(const Outcome &outcome)
{
    if (!m_contentType.isEmpty() || !m_station.empty()) {
        Output::Fields fields{
            {QStringLiteral("url"), m_url},
            {QStringLiteral("contentType"), m_contentType},
            {QStringLiteral("extension"), streamFileType(m_contentType).fileExtension},
        };
        fields.insert(fields.end(), m_station.begin(), m_station.end());
        output().results(fields);
    }
    finish(outcome);
}

} // namespace orvel
