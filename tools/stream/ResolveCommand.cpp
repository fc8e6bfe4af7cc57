#include "tools/stream/ResolveCommand.h"

namespace orvel {

void ResolveCommand::start()
{
    startDeadline([this](const Outcome &outcome) { finish(outcome); });
    m_resolver->resolve(*arguments().url, [this](const std::variant<Url, Outcome> &result) {
        if (const Url *url = std::get_if<Url>(&result)) {
            output().result(QStringLiteral("url"), url->text());
            finish();
        } else {
            finish(std::get<Outcome>(result));
        }
    });
}

} // namespace orvel
