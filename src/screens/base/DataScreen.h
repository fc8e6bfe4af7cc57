#pragma once

#include "api/PostData.h"
#include "app/ContactSheet.h"
#include "platform/ui/containers/ViewController.h"
#include "platform/ui/outlets/Label.h"
#include "platform/ui/outlets/Outlet.h"

#include <functional>

namespace orvel {

// A screen of the station's data: a title, a way back to the menu, a contact sheet, and requests that wait
// under the progress overlay.
class DataScreen : public orvel::ViewController, public PostDataDelegate
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are made by name in C++")
    Q_PROPERTY(QString strTitle MEMBER strTitle)
    // Empty on a screen that does not copy strTitle into it.
    OUTLET(Label, lblTitle);

public:
    // Set by whoever opens the screen.
    QString strTitle;

    // Shows the message in an alert and hides the overlay.
    void PostFail(const QString &message) override;
    // Opens the side menu.
    Q_INVOKABLE void acctionMenu();
    // Shows the contact sheet.
    Q_INVOKABLE void ShowMessage();

protected:
    // Shows the overlay and calls `work` `seconds` later, so that the overlay is drawn before `work` waits.
    void performUnderHud(double seconds, std::function<void()> work);
    // Sends a signed request for `path`, which ends in PostSuccess or PostFail before this returns. Call it
    // from a delayed perform only (see PostData).
    void ask(const QString &path);

private:
    const std::shared_ptr<ContactSheet> m_contact = ContactSheet::make();
};

} // namespace orvel
