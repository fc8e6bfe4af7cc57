#pragma once

#include "platform/ui/containers/ActionSheet.h"
#include "platform/ui/containers/ViewController.h"

#include <array>

namespace orvel {

enum class ContactAction { None, Sms, Telephone, Mail };

// What the buttons of a contact sheet do, by their index: "SMS", "Telephone", "Mail", "Cancel".
struct ContactNumbering
{
    std::array<ContactAction, 4> actions;
    bool logsIndex;

    // What each screen's own sheet does.
    static const ContactNumbering screen;
    // One later: "SMS" does nothing, "Telephone" writes an SMS, "Mail" calls, "Cancel" writes a mail.
    static const ContactNumbering shifted;
};

// The ways to reach the station: an SMS, a call, a mail. Made with its screen, and to be kept by it while the
// sheet is shown. Main thread.
class ContactSheet : public ActionSheetDelegate, public std::enable_shared_from_this<ContactSheet>
{
public:
    static std::shared_ptr<ContactSheet> make(const ContactNumbering &numbering = ContactNumbering::screen);

    // Shows the sheet over `presenter`, which is kept alive as long as the sheet is shown.
    void ShowMessage(ViewController &presenter);
    void clickedButtonAtIndex(ActionSheet &actionSheet, int buttonIndex) override;

private:
    explicit ContactSheet(const ContactNumbering &numbering) : m_numbering(numbering) {}
    static void showSMS(ViewController &presenter);
    static void showEmail(ViewController &presenter);
    static void call();

    const ContactNumbering m_numbering;
    std::weak_ptr<ViewController> m_presenter;
};

} // namespace orvel
