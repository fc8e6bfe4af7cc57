#pragma once

#include "audio/probe/StreamContentTypeGetter.h"
#include "audio/probe/StreamMetadataGetter.h"
#include "tools/stream/Command.h"
#include "tools/stream/Resolver.h"

namespace orvel {

// Prints a station's first title, its format and its name. At the deadline it prints what is known by then.
class ProbeCommand final : public Command
{
public:
    using Command::Command;
    ~ProbeCommand() override { m_resolver->cancel(); }
    void start() override;

private:
    void probe(const Url &url);
    void answerCame(const std::optional<MetadataDictionary> &dictionary,
                    const std::optional<UrlResponse> &response, const std::optional<NetError> &error);
    void metadataCame(const MetadataDictionary &dictionary);
    void end(const Outcome &outcome);

    const std::shared_ptr<Resolver> m_resolver = std::make_shared<Resolver>();
    const std::shared_ptr<StreamContentTypeGetter> m_contentTypeGetter =
        std::make_shared<StreamContentTypeGetter>();
    const std::shared_ptr<StreamMetadataGetter> m_metadataGetter = std::make_shared<StreamMetadataGetter>();
    QString m_url;
    QString m_contentType;
    Output::Fields m_station; // from the metadata
};

} // namespace orvel
