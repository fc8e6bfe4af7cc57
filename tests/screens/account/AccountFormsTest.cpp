#include "api/StationConfiguration.h"
#include "app/AppFixture.h"
#include "demo/DemoStation.h"
#include "platform/foundation/RunLoop.h"
#include "platform/foundation/UserDefaults.h"
#include "screens/account/MonoCompteController.h"
#include "screens/account/MonoCompteRegister.h"
#include "screens/account/NewsLetterController.h"
#include "support/ScriptedServer.h"

#include <QDateTime>
#include <QLoggingCategory>

using namespace orvel;
using namespace orvel::test;

namespace {

const char *const emailComplaint = "Please enter a valid email";
const char *const passwordComplaint = "Please enter a valid password";

QStringList logged;

struct AccountFormsTest : AppFixture
{
    static inline std::unique_ptr<DemoStation> station;
    UserDefaults &defaults = UserDefaults::standardUserDefaults();
    std::shared_ptr<MonoCompteController> login = std::make_shared<MonoCompteController>();

    static void SetUpTestSuite() { station = DemoStation::start({}); }
    static void TearDownTestSuite() { station.reset(); }

    AccountFormsTest()
    {
        // The list behind the forms fails at once, and has no part in what follows.
        useSite("http://127.0.0.1:1");
        clock.turn(0.2);
        expectAlert(alert() ? alert()->message() : QString());
        // A station of today takes no signatures of the past.
        RunLoop::main().takeClock(double(QDateTime::currentSecsSinceEpoch()));
        useSite(station->siteUrl());
    }
    ~AccountFormsTest() override
    {
        for (const char *key : {"user_id", "user_email", "user_save"})
            defaults.removeObjectForKey(key);
        StationConfiguration::use(StationConfiguration::compiledIn());
    }

    static void useSite(const QString &url)
    {
        StationConfiguration configuration = StationConfiguration::compiledIn();
        configuration.siteUrl = url;
        StationConfiguration::use(configuration);
    }
    template<class Screen>
    std::shared_ptr<Screen> present(const std::shared_ptr<Screen> &screen)
    {
        center().presentViewController(screen, false);
        return screen;
    }
    ViewController *presented() { return app->window()->presentedViewController(); }
    void send(FormController &form)
    {
        form.acctionLogin();
        letEventsRun();
        EXPECT_TRUE(ProgressHud::shared().isVisible());
        EXPECT_EQ(ProgressHud::shared().status(), "Please Wait...");
        clock.turn(0.09);
        EXPECT_EQ(alert(), nullptr);
        clock.turn(0.02);
        letEventsRun();
        EXPECT_FALSE(ProgressHud::shared().isVisible());
    }
    void expectAlert(const QString &message)
    {
        ASSERT_NE(alert(), nullptr) << message.toStdString();
        EXPECT_EQ(alert()->title(), "Alert");
        EXPECT_EQ(alert()->message(), message);
        alert()->click(0);
        EXPECT_EQ(alert(), nullptr);
    }
    void logIn(const QString &email, const QString &password)
    {
        present(login);
        login->txtEmail.setText(email);
        login->txtPass.setText(password);
        send(*login);
    }
    QVariant stored(const char *key) { return defaults.objectForKey(key); }
};

} // namespace

TEST_F(AccountFormsTest, TellsTheFirstFieldThatIsWrongAndSendsNothing)
{
    const auto enrol = std::make_shared<MonoCompteRegister>();
    const auto newsletter = std::make_shared<NewsLetterController>();
    const struct
    {
        FormController &form;
        QString identity, email, pass;
        QString complaint;
        TextField &focus;
    } cases[] = {
        {*login, "", "a@b.fr", "", passwordComplaint, login->txtPass},
        {*login, "", "a@b", "", emailComplaint, login->txtEmail},
        {*login, "", " a@b.fr", "secret", emailComplaint, login->txtEmail},
        {*enrol, "", "", "", "Please enter the user name", enrol->txtIdentity},
        {*enrol, " ", "", "", emailComplaint, enrol->txtEmail},
        {*enrol, "a", "a@b.fr", "", passwordComplaint, enrol->txtPass},
        {*newsletter, "", "a", "", emailComplaint, newsletter->txtEmail},
        {*newsletter, "", "a@b.fr", "", "you must enter in field", newsletter->txtPass},
    };
    for (const auto &test : cases) {
        enrol->txtIdentity.setText(test.identity);
        test.form.txtEmail.setText(test.email);
        test.form.txtPass.setText(test.pass);
        QList<bool> wanted;
        const auto watch =
            QObject::connect(&test.focus, &TextField::focusWanted, [&](bool wants) { wanted << wants; });
        test.form.acctionLogin();
        QObject::disconnect(watch);
        EXPECT_EQ(wanted, QList<bool>({true})) << test.complaint.toStdString();
        expectAlert(test.complaint);
        clock.turn(1);
        letEventsRun();
        EXPECT_FALSE(ProgressHud::shared().isVisible());
        EXPECT_EQ(alert(), nullptr);
    }
}

TEST_F(AccountFormsTest, LogsInAndRemembersOnlyWhoWantsIt)
{
    const struct
    {
        const char *email, *password;
        int taps;
        QVariant id;
    } cases[] = {{"camille@example.org", "musique", 2, "1041"}, {"leo@example.org", "guitare", 1, 1042}};
    for (const auto &test : cases) {
        present(login);
        for (int i = 0; i < test.taps; ++i)
            login->btnCheck.touchUpInside();
        EXPECT_EQ(login->btnCheck.backgroundImage(), test.taps == 1 ? "check.png" : "uncheck.png");
        app->isLogin = false;
        logIn(test.email, test.password);
        expectAlert("User successfully Login.");
        EXPECT_EQ(presented(), nullptr);
        EXPECT_EQ(login->txtEmail.text() + login->txtPass.text(), "");
        EXPECT_TRUE(app->isLogin);
        EXPECT_EQ(stored("user_id"), test.id);
        EXPECT_EQ(stored("user_email"), test.email);
        EXPECT_EQ(stored("user_save"), QVariant(test.taps == 1));
    }
}

TEST_F(AccountFormsTest, AWrongPasswordLeavesEverythingAsItWas)
{
    logIn("camille@example.org", "Musique");
    expectAlert("Adresse e-mail ou mot de passe incorrect.");
    EXPECT_EQ(presented(), login.get());
    EXPECT_EQ(login->txtPass.text(), "Musique");
    EXPECT_FALSE(app->isLogin);
    EXPECT_FALSE(stored("user_email").isValid());
}

TEST_F(AccountFormsTest, RegistersWithoutLoggingIn)
{
    present(login)->acctionRegister();
    auto &enrol = dynamic_cast<MonoCompteRegister &>(*presented());
    enrol.txtIdentity.setText(QString::fromUtf8("Zoé & 🎧"));
    enrol.txtEmail.setText("camille@example.org");
    enrol.txtPass.setText("un=secret&+");
    send(enrol);
    expectAlert(QString::fromUtf8("Un compte existe déjà avec cette adresse e-mail."));
    EXPECT_EQ(presented(), &enrol);
    enrol.txtEmail.setText("zoe@example.org");
    send(enrol);
    expectAlert("User successfully register.");
    EXPECT_EQ(presented(), login.get());
    EXPECT_EQ(stored("user_id"), "1043");
    EXPECT_EQ(stored("user_email"), "zoe@example.org");
    EXPECT_FALSE(stored("user_save").isValid());
    EXPECT_FALSE(app->isLogin);
    // The server has got every character.
    login->acctionMenu();
    logIn("zoe@example.org", "un=secret&+");
    expectAlert("User successfully Login.");
}

TEST_F(AccountFormsTest, SubscribesToTheNewsletterOnce)
{
    const auto newsletter = std::make_shared<NewsLetterController>();
    const auto subscribe = [&] {
        present(newsletter);
        newsletter->txtEmail.setText("ana@example.org");
        newsletter->txtPass.setText("Ana");
        send(*newsletter);
    };
    subscribe();
    expectAlert("Merci Ana ! La newsletter d'Orvel Radio vous attend chaque vendredi.");
    EXPECT_EQ(presented(), nullptr);
    EXPECT_EQ(newsletter->txtEmail.text() + newsletter->txtPass.text(), "");
    subscribe();
    expectAlert(QString::fromUtf8("Cette adresse est déjà inscrite à la newsletter."));
    EXPECT_EQ(presented(), newsletter.get());
    EXPECT_FALSE(stored("user_email").isValid());
}

TEST_F(AccountFormsTest, SendsASignedFormAndLogsTheAnswerAlone)
{
    const QByteArray body = R"({"content":{"user_id":7}})";
    ScriptedServer server(
        Script{Send{httpHead("Content-Length: " + QByteArray::number(body.size()) + "\r\n") + body}});
    useSite(server.url("/site"));
    logged.clear();
    QLoggingCategory::setFilterRules("orvel.*=true");
    const auto handler = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext &, const QString &line) { logged << line; });
    logIn("a+b@c.fr", "tr\u00e8s secret");
    qInstallMessageHandler(handler);
    QLoggingCategory::setFilterRules({});
    const QByteArray request = server.requests().at(0);
    EXPECT_TRUE(request.startsWith("POST /site/api/login HTTP/1.1\r\n"));
    EXPECT_TRUE(request.contains("\r\nContent-Type: application/x-www-form-urlencoded; charset=utf-8\r\n"));
    EXPECT_TRUE(request.contains("\r\nX-Request-Hash: "));
    EXPECT_TRUE(request.endsWith("\r\n\r\nlogin=a%2Bb%40c.fr&password=tr%C3%A8s%20secret"));
    EXPECT_EQ(logged.filter("diction-->").size(), 1);
    EXPECT_TRUE(logged.filter("secret").isEmpty() && logged.filter("c.fr").isEmpty());
}

TEST_F(AccountFormsTest, TakesWhatIsNoErrorOfItsOwnKindForASuccess)
{
    const QString accepted = "User successfully Login.";
    const struct
    {
        QByteArray body;
        QString message;
        QVariant id;
    } cases[] = {
        {"", accepted, {}},
        {"<html>502 Bad Gateway</html>", accepted, {}},
        {R"([{"error":{"message":"non"}}])", accepted, {}},
        {R"({"error":{"message":"non"}})", accepted, {}}, // not where a login's error stands
        {R"({"0":"non","content":[1]})", accepted, {}},
        {R"({"0":null,"content":{"user_id":null}})", accepted, {}},
        {R"({"content":{"user_id":{"a":1}}})", accepted, {}},
        {R"({"content":{"user_id":true}})", accepted, {}},
        {R"({"content":{"user_id":"042"}})", accepted, "042"},
        {R"({"content":{"user_id":-3}})", accepted, -3},
        {R"({"content":{"user_id":12345678901234567890}})", accepted, "12345678901234567890"},
        {R"({"content":{"user_id":")" + QByteArray(64 * 1024, 'x') + "\"}}", accepted,
         QString(64 * 1024, 'x')},
        {R"({"content":{"user_id":")" + QByteArray(64 * 1024 + 1, 'x') + "\"}}", accepted, {}},
        {R"({"0":{"error":{"message":"non"}},"content":{"user_id":9}})", "non", "kept"},
        {R"({"0":{"error":"non"}})", "", "kept"},
        {R"({"0":{"error":{"message":7}}})", "", "kept"},
        {R"({"0":{}})", "", "kept"},
    };
    for (const auto &test : cases) {
        defaults.setObject("kept", "user_id");
        app->isLogin = false;
        const QByteArray length = "Content-Length: " + QByteArray::number(test.body.size()) + "\r\n";
        ScriptedServer server(Script{Send{httpHead(length) + test.body}});
        useSite(server.url("/site"));
        logIn("a@b.fr", " ");
        expectAlert(test.message);
        EXPECT_EQ(app->isLogin, test.message == accepted) << test.body.constData();
        EXPECT_EQ(presented() == nullptr, test.message == accepted) << test.body.constData();
        EXPECT_EQ(stored("user_id"), test.id) << test.body.constData();
    }
}

TEST_F(AccountFormsTest, AServiceOutOfReachIsToldAndTheFormStays)
{
    useSite("http://127.0.0.1:1");
    logIn("camille@example.org", "musique");
    ASSERT_NE(alert(), nullptr);
    EXPECT_FALSE(alert()->message().isEmpty());
    EXPECT_EQ(presented(), login.get());
    EXPECT_EQ(login->txtEmail.text(), "camille@example.org");
    EXPECT_FALSE(app->isLogin);
}

TEST_F(AccountFormsTest, ALowScreenMovesUpWhileAFieldIsEdited)
{
    const auto enrol = present(std::make_shared<MonoCompteRegister>());
    enrol->txtEmail.setFrame({30, 150.5, 260, 48});
    enrol->txtPass.setFrame({30, 220, 260, 48});
    for (const auto &[height, up] : {std::pair{480.0, 108}, {489.9, 108}, {490.0, 0}, {568.0, 0}}) {
        enrol->view.setFrame({0, 0, 320, height});
        enrol->txtEmail.beginEditing();
        EXPECT_EQ(enrol->lift(), up) << height;
        enrol->txtEmail.endEditing();
        enrol->txtPass.beginEditing();
        EXPECT_EQ(enrol->lift(), up == 0 ? 0 : 178) << height;
        // Turned meanwhile, it still goes back all the way and no further.
        enrol->view.setFrame({0, 0, 568, 1000 - height});
        enrol->txtPass.endEditing();
        EXPECT_EQ(enrol->lift(), 0) << height;
    }
}

TEST_F(AccountFormsTest, FormsAreFramedAndGiveUpTheKeyboardOnReturn)
{
    const auto enrol = present(std::make_shared<MonoCompteRegister>());
    EXPECT_EQ(enrol->viewCenter.borderWidth(), 2);
    EXPECT_EQ(enrol->viewCenter.borderColor(), QColor(170, 170, 170));
    for (TextField *field : {&enrol->txtIdentity, &enrol->txtEmail, &enrol->txtPass}) {
        EXPECT_EQ(field->leftImage(), "tblank.png");
        QList<bool> wanted;
        QObject::connect(field, &TextField::focusWanted, [&](bool wants) { wanted << wants; });
        field->returnKey();
        EXPECT_EQ(wanted, QList<bool>({false}));
        field->disconnect();
    }
    enrol->acctionMenu();
    EXPECT_TRUE(app->revealSideViewController()->isOpen());
    EXPECT_EQ(presented(), enrol.get());
    enrol->acctionBack();
    EXPECT_EQ(presented(), nullptr);
}
