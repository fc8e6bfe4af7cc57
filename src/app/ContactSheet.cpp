#include "app/ContactSheet.h"

#include "api/StationConfiguration.h"
#include "app/GLOB.h"
#include "app/MailPresenter.h"
#include "platform/foundation/KeepAlive.h"
#include "platform/foundation/Log.h"
#include "platform/ui/composers/MessageComposeViewController.h"
#include "platform/ui/containers/Window.h"

namespace orvel {

namespace {

using enum ContactAction;

void showError(const QString &message)
{
    Window::showAlert(QStringLiteral("Error"), message, {QStringLiteral("OK")});
}

// Without state: one for all composers.
class MessageOutcome final : public MessageComposeViewControllerDelegate
{
    void didFinishWithResult(MessageComposeViewController &controller, MessageComposeResult result) override
    {
        if (result == MessageComposeResult::Failed)
            showError(QStringLiteral("Failed to send SMS!"));
        controller.dismissViewController(true);
    }
};

} // namespace

const ContactNumbering ContactNumbering::screen{{Sms, Telephone, Mail, None}, true};
const ContactNumbering ContactNumbering::shifted{{None, Sms, Telephone, Mail}, false};

std::shared_ptr<ContactSheet> ContactSheet::make(const ContactNumbering &numbering)
{
    return std::shared_ptr<ContactSheet>(new ContactSheet(numbering));
}

void ContactSheet::ShowMessage(ViewController &presenter)
{
    m_presenter = presenter.weak_from_this();
    const auto sheet =
        Window::showActionSheet(QStringLiteral("Please Select Options"),
                                {QStringLiteral("SMS"), QStringLiteral("Telephone"), QStringLiteral("Mail")},
                                QStringLiteral("Cancel"), weak_from_this());
    // The presenter may be what keeps this object, so it is kept from outside: it goes with the sheet.
    keepUntilDestroyed(*sheet, presenter.shared_from_this());
}

void ContactSheet::clickedButtonAtIndex(ActionSheet &, int buttonIndex)
{
    if (m_numbering.logsIndex)
        qCInfo(logApp, "button index %d", buttonIndex);
    const auto presenter = m_presenter.lock();
    if (!presenter || buttonIndex < 0 || buttonIndex >= int(m_numbering.actions.size()))
        return;
    switch (m_numbering.actions[std::size_t(buttonIndex)]) {
    case None:
        break;
    case Sms:
        showSMS(*presenter);
        break;
    case Telephone:
        call();
        break;
    case Mail:
        showEmail(*presenter);
        break;
    }
}

void ContactSheet::showSMS(ViewController &presenter)
{
    if (!MessageComposeViewController::canSendText()) {
        showError(QStringLiteral("Your device doesn't support SMS!"));
        return;
    }
    static const auto outcome = std::make_shared<MessageOutcome>();
    const auto composer = std::make_shared<MessageComposeViewController>();
    composer->setMessageComposeDelegate(outcome);
    composer->setRecipients({StationConfiguration::current().smsShortCode});
    composer->setBody(QStringLiteral("TRV votre texte"));
    presenter.presentViewController(composer, true);
}

void ContactSheet::showEmail(ViewController &presenter)
{
    MailPresenter::compose(presenter, [] {
        MailDraft draft;
        draft.recipients = {StationConfiguration::current().contactMail};
        return draft;
    });
}

void ContactSheet::call()
{
    const QString number = StationConfiguration::current().telephone;
    openOutside(
        QStringLiteral("tel://") + number,
        QStringLiteral("Aucune application de cet appareil ne peut téléphoner : appelez la station au %1.")
            .arg(number));
}

} // namespace orvel
