#pragma once

#include "tools/stream/Command.h"
#include "tools/stream/Resolver.h"

namespace orvel {

// Prints the URL of the stream behind a playlist; a stream's own URL as it is.
class ResolveCommand final : public Command
{
public:
    using Command::Command;
    ~ResolveCommand() override { m_resolver->cancel(); }
    void start() override;

private:
    const std::shared_ptr<Resolver> m_resolver = std::make_shared<Resolver>();
};

} // namespace orvel
