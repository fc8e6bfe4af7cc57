#include "screens/radio/TitleProbes.h"

#include "audio/probe/StreamMetadataGetter.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/MainQueue.h"
#include "platform/foundation/RunLoop.h"

namespace orvel {

namespace {

constexpr double secondsBetweenRounds = 120;

} // namespace

void TitleProbes::start(std::shared_ptr<TitledRadios> radios)
{
    const std::shared_ptr<TitleProbes> chain(new TitleProbes(std::move(radios)));
    MainQueue::async([chain] { chain->fire(); });
}

void TitleProbes::fire()
{
    ++m_intTitle;
    if (m_intTitle + 1 < m_radios->numberOfRadios()) {
        probe();
        return;
    }
    m_intTitle = -1;
    RunLoop::main().after(secondsBetweenRounds, [chain = shared_from_this()] { chain->fire(); });
}

void TitleProbes::probe()
{
    const auto done = [chain = shared_from_this()](const std::optional<MetadataDictionary> &metadata) {
        const MetadataDictionary fields = metadata.value_or(MetadataDictionary());
        chain->wasProbed(fields.value(QStringLiteral("StreamTitle"), QStringLiteral("")));
        qCInfo(logApp) << fields;
    };
    const std::optional<Url> url = Url::fromText(m_radios->streamOf(m_intTitle));
    if (!url) {
        MainQueue::async([done] { done({}); });
        return;
    }
    // Its own handler keeps the probe, until it was called or the stream has ended without a title.
    const auto probe = std::make_shared<StreamMetadataGetter>(QStringLiteral("My Queue"));
    probe->getMetadataFromUrl(
        *url, [probe, done](const auto &metadata, const auto &, const auto &) { done(metadata); });
}

void TitleProbes::wasProbed(const QString &title)
{
    m_radios->showTitle(m_intTitle, title);
    fire();
}

} // namespace orvel
