#include "platform/ui/containers/Question.h"

#include "platform/foundation/MainQueue.h"

#include <utility>

namespace orvel {

void Question::click(int buttonIndex)
{
    const auto tellDelegate = std::exchange(m_tellDelegate, nullptr);
    if (!tellDelegate)
        return;
    // The click comes from its own layout, which must not lose it before the click has returned.
    MainQueue::async([self = shared_from_this()] {});
    Q_EMIT clicked();
    tellDelegate(buttonIndex);
}

} // namespace orvel
