#pragma once

#include "platform/system/SystemServices.h"

#include <functional>
#include <optional>

namespace orvel {

class ViewController;

// Shows the composer of a mail, to the station or about an item, and reports how the mail ended. Main thread.
class MailPresenter
{
public:
    // Presents a composer over `presenter` with the application's subject and the rest of `draft`. When it
    // has ended, shows an alert with the outcome and then dismisses the composer. Shows an alert instead, and
    // does not call `draft`, when the device has no mail. Shows nothing when `draft` returns nullopt. Hides
    // the progress overlay in every case.
    static void compose(ViewController &presenter, const std::function<std::optional<MailDraft>()> &draft);
};

} // namespace orvel
