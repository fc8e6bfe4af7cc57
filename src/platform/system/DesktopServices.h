#pragma once

#include "platform/system/SystemServices.h"

namespace orvel {

// The services of a freedesktop.org desktop: its own data say which program takes a scheme, xdg-open and
// xdg-email hand things over. Web pages also go to the programs of $BROWSER, or x-www-browser. Main thread.
class DesktopServices : public SystemServices
{
public:
    bool canOpen(const QString &scheme) const override;
    bool openURL(const QString &url) override;
    bool sendMail(const MailDraft &draft, QString &error) override;
    bool sendMessage(const MessageDraft &draft, QString &error) override;
    bool takesAttachments() const override;
};

} // namespace orvel
