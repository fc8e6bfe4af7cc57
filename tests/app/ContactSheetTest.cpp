#include "app/AppFixture.h"
#include "app/ShareData.h"
#include "platform/ui/composers/MailComposeViewController.h"
#include "platform/ui/composers/MessageComposeViewController.h"
#include "support/FakeDesktop.h"

#include <QFile>
#include <QLoggingCategory>

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
    static QStringList logged;
    QLoggingCategory::setFilterRules("orvel.app.info=true");
    const auto handler = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext &, const QString &line) { logged << line; });
    for (const bool shifted : {false, true}) {
        for (int index = 0; index < 4; ++index) {
            system->opened.clear();
            const QString composer = choose(index, shifted);
            EXPECT_EQ(composer + system->opened.join(' '), outcomes[shifted][index]) << shifted << index;
            radios().dismissViewController(false);
        }
    }
    qInstallMessageHandler(handler);
    QLoggingCategory::setFilterRules({});
    EXPECT_EQ(logged.filter("button index"),
              (QStringList{"button index 0", "button index 1", "button index 2", "button index 3"}));
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

    const FakeDesktop desktop; // for the file of the mail that is saved
    QString under;             // what an alert comes over
    QObject::connect(app->window(), &Window::frontQuestionChanged, app->window(), [&] {
        if (alert())
            under = presented();
    });
    const std::tuple<int, const char *, QString, QString> outcomes[] = {
        {0, "sendButton", "", ""},
        {0, "sendButton", "en panne", "Error: Failed to send SMS!"},
        {2, "saveButton", "", "Email: Mail saved"},
        {2, "sendButton", "", "Email: Mail sent"},
        {2, "sendButton", "en panne", "Email: Mail sent failure: en panne"}};
    for (const auto &[index, button, failure, told] : outcomes) {
        system->failure = failure;
        const QString composer = choose(index);
        under.clear();
        press(button);
        EXPECT_EQ(under, told.isEmpty() ? QString() : composer) << "the alert comes before the composer goes";
        EXPECT_EQ(alertTold(), told);
        EXPECT_EQ(presented(), "");
        if (told.endsWith("saved")) {
            EXPECT_TRUE(alert()->message().startsWith(desktop.path("")) && QFile::exists(alert()->message()));
            alertTold();
        }
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
        EXPECT_TRUE(!alert() || alert()->buttons() == QStringList{"OK"});
        EXPECT_EQ(alertTold(), failures[index]);
    }
}
