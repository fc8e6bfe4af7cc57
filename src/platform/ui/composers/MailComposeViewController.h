#pragma once

#include "platform/system/SystemServices.h"
#include "platform/ui/containers/ViewController.h"
#include "platform/ui/outlets/Button.h"
#include "platform/ui/outlets/ImageView.h"
#include "platform/ui/outlets/Label.h"
#include "platform/ui/outlets/Outlet.h"
#include "platform/ui/outlets/TextField.h"
#include "platform/ui/outlets/TextView.h"

namespace orvel {

class MailComposeViewController;

enum class MailComposeResult { Cancelled = 0, Saved = 1, Sent = 2, Failed = 3 };

class MailComposeViewControllerDelegate
{
public:
    virtual ~MailComposeViewControllerDelegate() = default;
    // `error` describes a failure. The composer stays on the screen until somebody dismisses it.
    virtual void didFinishWithResult(MailComposeViewController &controller, MailComposeResult result,
                                     const QString &error) = 0;
};

// Lets the user finish a mail and hands it to the system's mail program, or keeps it as a file among the
// user's documents. Present it; it reports once to its delegate how it ended. It
// dismisses itself only when the delegate is gone. Main thread.
class MailComposeViewController : public orvel::ViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are made in C++")
public:
    MailComposeViewController();
    static bool canSendMail();

    void setMailComposeDelegate(std::weak_ptr<MailComposeViewControllerDelegate> delegate);
    void setSubject(const QString &subject);
    // The user edits it as plain text. An untouched body is sent as it is given here.
    void setMessageBody(const QString &html);
    void setToRecipients(const QStringList &recipients);
    // Keeps one attachment, the last. Empty data: none.
    void addAttachmentData(const QByteArray &attachment, const QString &mimeType, const QString &fileName);

    // Returns what would be sent now.
    MailDraft draft() const;

    OUTLET(TextField, recipientsField);
    OUTLET(TextField, subjectField);
    OUTLET(TextView, bodyView);
    OUTLET(ImageView, attachmentImage);
    // Hidden without an attachment.
    OUTLET(Label, attachmentName);
    // The attachment's size, or that the mail program does not take it.
    OUTLET(Label, attachmentNote);
    OUTLET(Button, cancelButton);
    OUTLET(Button, saveButton);
    // Enabled while the recipients are not empty.
    OUTLET(Button, sendButton);

private:
    void send();
    void save();
    void finish(MailComposeResult result, const QString &error = {});

    std::weak_ptr<MailComposeViewControllerDelegate> m_delegate;
    MailDraft m_draft; // as given; what the fields hold goes before it
    QString m_bodyAsText;
    bool m_finished = false;
};

} // namespace orvel
