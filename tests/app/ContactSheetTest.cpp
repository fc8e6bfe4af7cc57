#include "api/StationConfiguration.h"
#include "app/AppFixture.h"
#include "app/ShareData.h"
#include "platform/ui/MailComposeViewController.h"
#include "platform/ui/MessageComposeViewController.h"

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
        const ViewController *const presented = app->window()->presentedViewController();
        return presented ? presented->layoutName() : QString();
    }
    template<class Composer>
    Composer &composer()
    {
        return dynamic_cast<Composer &>(*app->window()->presentedViewController());
    }
    // Its "sendButton" or "cancelButton".
    void press(const char *button)
    {
        app->window()->presentedViewController()->property(button).value<Button *>()->touchUpInside();
    }
    void expectAlert(const QString &title, const QString &message)
    {
        ASSERT_NE(alert(), nullptr) << qPrintable(message);
        EXPECT_EQ(alert()->title(), title);
        EXPECT_EQ(alert()->message(), message);
        EXPECT_EQ(alert()->buttons(), QStringList{"OK"});
        alert()->click(0);
    }
};

} // namespace

TEST_F(ContactSheetTest, EachNumberingDoesWhatItsTableSays)
{
    const QString sms = "MessageComposeViewController";
    const QString mail = "MailComposeViewController";
    const QString call = "tel://" + station.telephone;
    const struct
    {
        bool shifted;
        QStringList outcomes; // by index
    } cases[] = {{false, {sms, call, mail, ""}}, {true, {"", sms, call, mail}}};
    for (const auto &test : cases) {
        for (int index = 0; index < 4; ++index) {
            system->opened.clear();
            QString outcome = choose(index, test.shifted);
            if (!system->opened.isEmpty())
                outcome += system->opened.join(' ');
            EXPECT_EQ(outcome, test.outcomes[index]) << test.shifted << index;
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
    EXPECT_EQ(app->window()->presentedViewController()->layoutName(), "MessageComposeViewController");
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
    const MessageDraft message = composer<MessageComposeViewController>().draft();
    EXPECT_EQ(message.recipients, QStringList{station.smsShortCode});
    EXPECT_EQ(message.body, "TRV votre texte");
    press("cancelButton");
    choose(2);
    const MailDraft mail = composer<MailComposeViewController>().draft();
    EXPECT_EQ(mail.recipients, QStringList{station.contactMail});
    EXPECT_EQ(mail.subject, "ORVEL Application");
    EXPECT_TRUE(mail.body.isEmpty() && mail.attachment.isEmpty());
    press("cancelButton");
    expectAlert("Email", "Mail cancelled");

    const struct
    {
        int index;
        const char *failure;
        const char *title; // none: nothing is told
        const char *told;
    } outcomes[] = {{0, "", nullptr, nullptr},
                    {0, "en panne", "Error", "Failed to send SMS!"},
                    {2, "", "Email", "Mail sent"},
                    {2, "en panne", "Email", "Mail sent failure: en panne"}};
    for (const auto &[index, failure, title, told] : outcomes) {
        system->failure = failure;
        choose(index);
        press("sendButton");
        EXPECT_EQ(app->window()->presentedViewController(), nullptr);
        if (title)
            expectAlert(title, told);
        EXPECT_EQ(alert(), nullptr);
    }
    EXPECT_EQ(system->messages.last().body, "TRV votre texte");
    EXPECT_EQ(system->mails.last().subject, "ORVEL Application");
}

TEST_F(ContactSheetTest, ADeviceThatCannotSaysSo)
{
    system->refused = QStringList{"sms", "mailto", "tel"};
    EXPECT_EQ(choose(0), "");
    expectAlert("Error", "Your device doesn't support SMS!");
    EXPECT_EQ(choose(2), "");
    expectAlert("Failure", "Your device doesn't support the composer sheet.Please set Email account.");
    EXPECT_EQ(choose(1), "");
    expectAlert("Orvel Radio", QString::fromUtf8("Aucune application de cet appareil ne peut téléphoner : "
                                                 "appelez la station au %1.")
                                   .arg(station.telephone));
    choose(3);
    EXPECT_EQ(alert(), nullptr);
}
