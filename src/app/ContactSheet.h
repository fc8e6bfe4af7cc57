#pragma once

#include "platform/ui/containers/ActionSheet.h"
#include "platform/ui/containers/ViewController.h"

#include <array>

namespace orvel {

enum class ContactAction { None, Sms, Telephone, Mail };

// What the buttons of a contact sheet do, by index: "SMS", "Telephone", "Mail", "Cancel".
struct ContactNumbering
{
    std::array<ContactAction, 4> actions;
    // Whether "button index N" is logged.
    bool logsIndex;

    // Of each screen's own sheet.
    static const ContactNumbering screen;
    // Deliberate: one later, on the web radios' screen. "SMS" has no effect, "Telephone" writes an SMS,
    // "Mail" calls, "Cancel" writes a mail (ContactSheetTest.EachNumberingDoesWhatItsTableSays).
    static const ContactNumbering shifted;
};

// The ways to reach the station: an SMS, a call, a mail. A screen owns one for as long as it lives. Main
// thread.
class ContactSheet : public ActionSheetDelegate, public std::enable_shared_from_this<ContactSheet>
{
public:
    static std::shared_ptr<ContactSheet> make(const ContactNumbering &numbering = ContactNumbering::screen);

    // Shows the sheet over `presenter` and keeps it alive until the sheet is gone.
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
