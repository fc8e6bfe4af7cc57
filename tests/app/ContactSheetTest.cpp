#include "api/StationConfiguration.h"
#include "app/AppFixture.h"
#include "app/ShareData.h"
#include "platform/ui/composers/MailComposeViewController.h"
#include "platform/ui/composers/MessageComposeViewController.h"

using namespace orvel;
using namespace orvel::test;

namespace {

struct ContactSheetTest : AppFixture
{
    std::shared_ptr<ContactSheet> contact = ContactSheet::make();
    ShareData share;
    const StationConfiguration &station = StationConfiguration::current();

    // The composer that the sheet's button brings, by its layout; empty when none.
    QString choose(int index, bool shifted = false)
    {
        if (shifted)
            share.shairEmailOption(radios().shared_from_this());
        else
            contact->ShowMessage(radios());
        app->window()->actionSheet()->click(index);
        return presented();
    }
    // The composer's "sendButton" or "cancelButton".
    void press(const char *button)
    {
        app->window()->presentedViewController()->property(button).value<Button *>()->touchUpInside();
    }
};

} // namespace

TEST_F(ContactSheetTest, EachNumberingDoesWhatItsTableSays)
{
    const QString sms = "MessageComposeViewController";
    const QString mail = "MailComposeViewController";
    const QString call = "tel://" + station.telephone;
    const QStringList outcomes[] = {{sms, call, mail, ""}, {"", sms, call, mail}};
    for (const bool shifted : {false, true}) {
        for (int index = 0; index < 4; ++index) {
            system->opened.clear();
            const QString composer = choose(index, shifted);
            EXPECT_EQ(composer + system->opened.join(' '), outcomes[shifted][index]) << shifted << index;
            radios().dismissViewController(false);
        }
    }
    contact->ShowMessage(radios());
    const ActionSheet *const sheet = app->window()->actionSheet();
    EXPECT_EQ(sheet->property("title"), "Please Select Options");
    EXPECT_EQ(sheet->otherButtons(), (QStringList{"SMS", "Telephone", "Mail"}));
    EXPECT_EQ(sheet->property("cancelButton"), "Cancel");
}

TEST_F(ContactSheetTest, TheScreenIsKeptWhileItsSheetIsShown)
{
    auto screen = std::make_shared<ViewController>();
    const std::weak_ptr<ViewController> watched = screen;
    share.shairEmailOption(std::exchange(screen, nullptr));
    EXPECT_FALSE(watched.expired());
    app->window()->actionSheet()->click(1);
    EXPECT_EQ(presented(), "MessageComposeViewController");
    letEventsRun();
    EXPECT_TRUE(watched.expired());

    // A sheet that is still there when the application ends keeps nothing alive.
    radios().acctionEmail();
    const std::weak_ptr<ViewController> left = radios().weak_from_this();
    RunLoop::main().cancelAll();
    app.reset();
    EXPECT_TRUE(left.expired());
}

TEST_F(ContactSheetTest, PreparesAMessageAndAMailAndTellsTheirOutcome)
{
    choose(0);
    const MessageDraft message = presentedAs<MessageComposeViewController>().draft();
    EXPECT_EQ(message.recipients, QStringList{station.smsShortCode});
    EXPECT_EQ(message.body, "TRV votre texte");
    press("cancelButton");
    choose(2);
    const MailDraft mail = presentedAs<MailComposeViewController>().draft();
    EXPECT_EQ(mail.recipients, QStringList{station.contactMail});
    EXPECT_EQ(mail.subject, "ORVEL Application");
    EXPECT_TRUE(mail.body.isEmpty() && mail.attachment.isEmpty());
    press("cancelButton");
    EXPECT_EQ(alertTold(), "Email: Mail cancelled");

    const std::tuple<int, QString, QString> outcomes[] = {
        {0, "", ""},
        {0, "en panne", "Error: Failed to send SMS!"},
        {2, "", "Email: Mail sent"},
        {2, "en panne", "Email: Mail sent failure: en panne"}};
    for (const auto &[index, failure, told] : outcomes) {
        system->failure = failure;
        choose(index);
        press("sendButton");
        EXPECT_EQ(alertTold(), told);
        EXPECT_EQ(presented() + alertTold(), "");
    }
    EXPECT_EQ(system->messages.last().body, "TRV votre texte");
    EXPECT_EQ(system->mails.last().subject, "ORVEL Application");
}

TEST_F(ContactSheetTest, ADeviceThatCannotSaysSo)
{
    system->refused = QStringList{"sms", "mailto", "tel"};
    const QString failures[] = {
        "Error: Your device doesn't support SMS!",
        QString::fromUtf8("Orvel Radio: Aucune application de cet appareil ne peut téléphoner : "
                          "appelez la station au %1.")
            .arg(station.telephone),
        "Failure: Your device doesn't support the composer sheet.Please set Email account.",
        "",
    };
    for (int index = 0; index < 4; ++index) {
        EXPECT_EQ(choose(index), "");
        EXPECT_EQ(alertTold(), failures[index]);
    }
}
