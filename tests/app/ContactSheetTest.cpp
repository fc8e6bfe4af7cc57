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

TEST_F(ContactSheetTest, AnSmsIsPreparedAndOnlyItsFailureIsTold)
{
    choose(0);
    const MessageDraft draft = composer<MessageComposeViewController>().draft();
    EXPECT_EQ(draft.recipients, QStringList{station.smsShortCode});
    EXPECT_EQ(draft.body, "TRV votre texte");
    composer<MessageComposeViewController>().sendButton.touchUpInside();
    EXPECT_EQ(system->messages.last().body, "TRV votre texte");
    EXPECT_EQ(alert(), nullptr);
    EXPECT_EQ(app->window()->presentedViewController(), nullptr);

    choose(0);
    composer<MessageComposeViewController>().cancelButton.touchUpInside();
    EXPECT_EQ(alert(), nullptr);
    EXPECT_EQ(app->window()->presentedViewController(), nullptr);

    system->failure = "en panne";
    choose(0);
    composer<MessageComposeViewController>().sendButton.touchUpInside();
    expectAlert("Error", "Failed to send SMS!");
    EXPECT_EQ(app->window()->presentedViewController(), nullptr);
}

TEST_F(ContactSheetTest, AMailIsPreparedAndItsOutcomeIsTold)
{
    choose(2);
    const MailDraft draft = composer<MailComposeViewController>().draft();
    EXPECT_EQ(draft.recipients, QStringList{station.contactMail});
    EXPECT_EQ(draft.subject, "ORVEL Application");
    EXPECT_EQ(draft.body, "");
    EXPECT_TRUE(draft.attachment.isEmpty());
    composer<MailComposeViewController>().sendButton.touchUpInside();
    EXPECT_EQ(system->mails.last().subject, "ORVEL Application");
    EXPECT_EQ(app->window()->presentedViewController(), nullptr);
    expectAlert("Email", "Mail sent");

    choose(2);
    composer<MailComposeViewController>().cancelButton.touchUpInside();
    expectAlert("Email", "Mail cancelled");

    system->failure = "Le disque est plein.";
    choose(2);
    composer<MailComposeViewController>().sendButton.touchUpInside();
    expectAlert("Email", "Mail sent failure: Le disque est plein.");
    EXPECT_EQ(app->window()->presentedViewController(), nullptr);
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
