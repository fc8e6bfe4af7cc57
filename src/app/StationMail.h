#pragma once

#include "platform/system/SystemServices.h"

#include <functional>
#include <optional>

namespace orvel {

class ViewController;

// Mails of the application, to the station or about an item. Main thread.
class StationMail
{
public:
    // Shows a composer over `presenter` with the application's subject and the rest of `draft`, and later
    // tells in an alert how it ended. A device without mail gets an alert instead, and `draft` is not asked;
    // nothing is shown when there is no draft. Either way the progress overlay is hidden.
    static void compose(ViewController &presenter, const std::function<std::optional<MailDraft>()> &draft);
};

} // namespace orvel
