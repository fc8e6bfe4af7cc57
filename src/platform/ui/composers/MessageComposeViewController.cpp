#include "platform/ui/composers/MessageComposeViewController.h"

#include "platform/ui/composers/RecipientList.h"

namespace orvel {

MessageComposeViewController::MessageComposeViewController()
{
    const auto refresh = [this] {
        sendButton.setEnabled(!recipientsInText(recipientsField.text()).isEmpty());
    };
    connect(&recipientsField, &TextField::textChanged, this, refresh);
    refresh();
    cancelButton.setTarget([this](Button &) { finish(MessageComposeResult::Cancelled); });
    sendButton.setTarget([this](Button &) { send(); });
}

bool MessageComposeViewController::canSendText() { return SystemServices::current().canSendText(); }

void MessageComposeViewController::setMessageComposeDelegate(
    std::weak_ptr<MessageComposeViewControllerDelegate> delegate)
{
    m_delegate = std::move(delegate);
}

void MessageComposeViewController::setRecipients(const QStringList &recipients)
{
    recipientsField.setText(textOfRecipients(recipients));
}

void MessageComposeViewController::setBody(const QString &body) { bodyView.setText(body); }

MessageDraft MessageComposeViewController::draft() const
{
    return {recipientsInText(recipientsField.text()), bodyView.text()};
}

void MessageComposeViewController::send()
{
    if (m_finished)
        return;
    QString error;
    const bool sent = SystemServices::current().sendMessage(draft(), error);
    finish(sent ? MessageComposeResult::Sent : MessageComposeResult::Failed);
}

void MessageComposeViewController::finish(MessageComposeResult result)
{
    if (std::exchange(m_finished, true))
        return;
    const std::shared_ptr<ViewController> self = shared_from_this();
    if (const auto delegate = m_delegate.lock())
        delegate->didFinishWithResult(*this, result);
    else
        dismissViewController(true);
}

} // namespace orvel
