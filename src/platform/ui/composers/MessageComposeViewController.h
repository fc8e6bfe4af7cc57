#pragma once

#include "platform/system/SystemServices.h"
#include "platform/ui/containers/ViewController.h"
#include "platform/ui/outlets/Button.h"
#include "platform/ui/outlets/Outlet.h"
#include "platform/ui/outlets/TextField.h"
#include "platform/ui/outlets/TextView.h"

namespace orvel {

class MessageComposeViewController;

enum class MessageComposeResult { Cancelled = 0, Sent = 1, Failed = 2 };

class MessageComposeViewControllerDelegate
{
public:
    virtual ~MessageComposeViewControllerDelegate() = default;
    // The composer stays on the screen until somebody dismisses it.
    virtual void didFinishWithResult(MessageComposeViewController &controller,
                                     MessageComposeResult result) = 0;
};

// Lets the user finish a text message and hands it to the system's messaging program. Present it; it
// reports once to its delegate how it ended. It dismisses itself only when the delegate is gone. Main thread.
class MessageComposeViewController : public orvel::ViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are made in C++")
public:
    MessageComposeViewController();
    static bool canSendText();

    void setMessageComposeDelegate(std::weak_ptr<MessageComposeViewControllerDelegate> delegate);
    void setRecipients(const QStringList &recipients);
    void setBody(const QString &body);

    // Returns what would be sent now.
    MessageDraft draft() const;

    OUTLET(TextField, recipientsField);
    OUTLET(TextView, bodyView);
    OUTLET(Button, cancelButton);
    // Enabled while the recipients are not empty.
    OUTLET(Button, sendButton);

private:
    void send();
    void finish(MessageComposeResult result);

    std::weak_ptr<MessageComposeViewControllerDelegate> m_delegate;
    bool m_finished = false;
};

} // namespace orvel
