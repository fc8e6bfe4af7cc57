#include "platform/ui/composers/MailComposeViewController.h"

#include "platform/html/HtmlText.h"
#include "platform/pictures/PictureDecoder.h"
#include "platform/system/MailDraftFile.h"
#include "platform/ui/composers/RecipientList.h"
#include "platform/ui/containers/Window.h"

#include <QDir>
#include <QLocale>

namespace orvel {

MailComposeViewController::MailComposeViewController()
{
    const auto refresh = [this] {
        sendButton.setEnabled(!recipientsInText(recipientsField.text()).isEmpty());
    };
    connect(&recipientsField, &TextField::textChanged, this, refresh);
    refresh();
    addAttachmentData({}, {}, {});
    cancelButton.setTarget([this](Button &) { finish(MailComposeResult::Cancelled); });
    saveButton.setTarget([this](Button &) { save(); });
    sendButton.setTarget([this](Button &) { send(); });
}

bool MailComposeViewController::canSendMail() { return SystemServices::current().canSendMail(); }

void MailComposeViewController::setMailComposeDelegate(
    std::weak_ptr<MailComposeViewControllerDelegate> delegate)
{
    m_delegate = std::move(delegate);
}

void MailComposeViewController::setSubject(const QString &subject) { subjectField.setText(subject); }

void MailComposeViewController::setMessageBody(const QString &html)
{
    m_draft.body = html;
    m_bodyAsText = plainTextOfHtml(html);
    bodyView.setText(m_bodyAsText);
}

void MailComposeViewController::setToRecipients(const QStringList &recipients)
{
    recipientsField.setText(textOfRecipients(recipients));
}

void MailComposeViewController::addAttachmentData(const QByteArray &attachment, const QString &mimeType,
                                                  const QString &fileName)
{
    m_draft.attachment = attachment;
    m_draft.attachmentType = mimeType;
    m_draft.attachmentName = fileName;
    const bool none = attachment.isEmpty();
    attachmentImage.setImage({});
    if (!none)
        decodePicture(attachment, [this, alive = weak_from_this(), attachment](const QImage &picture) {
            const auto self = alive.lock();
            if (self && m_draft.attachment == attachment)
                attachmentImage.setImage(picture);
        });
    attachmentName.setText(fileName);
    attachmentName.setHidden(none);
    attachmentNote.setText(
        !SystemServices::current().takesAttachments()
            ? QStringLiteral("Votre messagerie ne la prendra pas : ajoutez-la vous-même.")
            : QLocale(QLocale::French)
                  .formattedDataSize(attachment.size(), 0, QLocale::DataSizeTraditionalFormat));
}

MailDraft MailComposeViewController::draft() const
{
    MailDraft draft = m_draft;
    draft.recipients = recipientsInText(recipientsField.text());
    draft.subject = subjectField.text();
    if (bodyView.text() != m_bodyAsText)
        draft.body = htmlOfPlainText(bodyView.text());
    return draft;
}

void MailComposeViewController::send()
{
    if (m_finished)
        return;
    QString error;
    const bool sent = SystemServices::current().sendMail(draft(), error);
    finish(sent ? MailComposeResult::Sent : MailComposeResult::Failed, error);
}

void MailComposeViewController::save()
{
    if (m_finished)
        return;
    QString error;
    const QString path = saveMailFile(draft(), error);
    if (path.isEmpty()) {
        finish(MailComposeResult::Failed, error);
        return;
    }
    Window::showAlert(QStringLiteral("Brouillon enregistré"), QDir::toNativeSeparators(path),
                      {QStringLiteral("OK")});
    finish(MailComposeResult::Saved);
}

void MailComposeViewController::finish(MailComposeResult result, const QString &error)
{
    if (std::exchange(m_finished, true))
        return;
    const std::shared_ptr<ViewController> self = shared_from_this();
    if (const auto delegate = m_delegate.lock())
        delegate->didFinishWithResult(*this, result, error);
    else
        dismissViewController(true);
}

} // namespace orvel
