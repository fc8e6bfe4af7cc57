#include "app/MailPresenter.h"

#include "app/GLOB.h"
#include "platform/foundation/FormatText.h"
#include "platform/ui/composers/MailComposeViewController.h"
#include "platform/ui/containers/Window.h"

namespace orvel {

namespace {

// Deliberate: no space after the full stop, as the alert was worded
// (ContactSheetTest.ADeviceThatCannotSaysSo).
const QString noMailText =
    QStringLiteral("Your device doesn't support the composer sheet.Please set Email account.");

QString messageFor(MailComposeResult result, const QString &error)
{
    switch (result) {
    case MailComposeResult::Cancelled:
        return QStringLiteral("Mail cancelled");
    case MailComposeResult::Saved:
        return QStringLiteral("Mail saved");
    case MailComposeResult::Sent:
        return QStringLiteral("Mail sent");
    case MailComposeResult::Failed:
        return QStringLiteral("Mail sent failure: ") + formatText(error);
    }
    return {};
}

// Without state: one for all composers.
class MailOutcome final : public MailComposeViewControllerDelegate
{
    void didFinishWithResult(MailComposeViewController &controller, MailComposeResult result,
                             const QString &error) override
    {
        Window::showAlert(QStringLiteral("Email"), messageFor(result, error), {QStringLiteral("OK")});
        controller.dismissViewController(true);
    }
};

void present(ViewController &presenter, const MailDraft &draft)
{
    static const auto outcome = std::make_shared<MailOutcome>();
    const auto composer = std::make_shared<MailComposeViewController>();
    composer->setMailComposeDelegate(outcome);
    composer->setSubject(QStringLiteral("ORVEL Application"));
    composer->setMessageBody(draft.body);
    composer->setToRecipients(draft.recipients);
    composer->addAttachmentData(draft.attachment, draft.attachmentType, draft.attachmentName);
    presenter.presentViewController(composer, true);
}

} // namespace

void MailPresenter::compose(ViewController &presenter, const std::function<std::optional<MailDraft>()> &draft)
{
    // Making the draft may wait for a picture.
    const auto alive = presenter.shared_from_this();
    if (!MailComposeViewController::canSendMail())
        Window::showAlert(QStringLiteral("Failure"), noMailText, {QStringLiteral("OK")});
    else if (const std::optional<MailDraft> made = draft())
        present(presenter, *made);
    GLOB::glob_HideHud();
}

} // namespace orvel
