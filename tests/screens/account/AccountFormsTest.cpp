#include "app/AppFixture.h"
#include "demo/DemoStation.h"
#include "platform/foundation/RunLoop.h"
#include "screens/account/MonoCompteController.h"
#include "screens/account/MonoCompteRegister.h"
#include "screens/account/NewsLetterController.h"
#include "support/ScriptedServer.h"

#include <QDateTime>
#include <QLoggingCategory>

using namespace orvel;
using namespace orvel::test;

namespace {

QStringList logged;

struct AccountFormsTest : AppFixture
{
    static inline std::unique_ptr<DemoStation> station;
    std::shared_ptr<MonoCompteController> login = std::make_shared<MonoCompteController>();

    static void SetUpTestSuite() { station = DemoStation::start({}); }
    static void TearDownTestSuite() { station.reset(); }

    AccountFormsTest()
    {
        // The list behind the forms fails at once, and has no part in what follows.
        useSite("http://127.0.0.1:1");
        clock.turn(0.2);
        alertTold();
        // A station of today takes no signatures of the past.
        RunLoop::main().takeClock(double(QDateTime::currentSecsSinceEpoch()));
        useSite(station->siteUrl());
    }
    template<class Screen>
    std::shared_ptr<Screen> present(const std::shared_ptr<Screen> &screen)
    {
        center().presentViewController(screen, false);
        return screen;
    }
    // What the user is told of it.
    QString send(FormController &form, const QString &email, const QString &pass)
    {
        form.txtEmail.setText(email);
        form.txtPass.setText(pass);
        form.acctionLogin();
        const bool isRefused = alert() != nullptr;
        letEventsRun();
        clock.turn(0.09);
        EXPECT_EQ(alert() != nullptr, isRefused);
        EXPECT_EQ(ProgressHud::shared().isVisible(), !isRefused);
        clock.turn(0.02);
        letEventsRun();
        EXPECT_FALSE(ProgressHud::shared().isVisible());
        const QString told = alertTold();
        EXPECT_EQ(alert(), nullptr);
        return told;
    }
    QString logIn(const QString &email, const QString &password)
    {
        return send(*present(login), email, password);
    }
    QVariant stored(const char *key) { return defaults.objectForKey(key); }
};

const QString loggedIn = "Alert: User successfully Login.";

} // namespace

TEST_F(AccountFormsTest, TellsTheFirstFieldThatIsWrongAndSendsNothing)
{
    const auto enrol = std::make_shared<MonoCompteRegister>();
    const auto newsletter = std::make_shared<NewsLetterController>();
    const QString email = "Please enter a valid email";
    const QString password = "Please enter a valid password";
    const auto refused = [this](FormController &form, const char *emailText, const char *pass,
                                const QString &complaint, TextField &focus) {
        QList<bool> wanted;
        QObject context;
        QObject::connect(&focus, &TextField::focusWanted, &context, [&](bool wants) { wanted << wants; });
        EXPECT_EQ(send(form, emailText, pass), "Alert: " + complaint);
        EXPECT_EQ(wanted, QList<bool>({true})) << complaint.toStdString();
    };
    refused(*login, "a@b.fr", "", password, login->txtPass);
    refused(*login, "a@b", "", email, login->txtEmail);
    refused(*login, " a@b.fr", "secret", email, login->txtEmail);
    refused(*enrol, "", "", "Please enter the user name", enrol->txtIdentity);
    enrol->txtIdentity.setText(" ");
    refused(*enrol, "", "", email, enrol->txtEmail);
    refused(*enrol, "a@b.fr", "", password, enrol->txtPass);
    refused(*newsletter, "a", "", email, newsletter->txtEmail);
    refused(*newsletter, "a@b.fr", "", "you must enter in field", newsletter->txtPass);
}

TEST_F(AccountFormsTest, LogsInAndRemembersOnlyWhoWantsIt)
{
    EXPECT_EQ(logIn("camille@example.org", "Musique"), "Alert: Adresse e-mail ou mot de passe incorrect.");
    EXPECT_EQ(presented() + login->txtPass.text(), "MonoCompteControllerMusique");
    EXPECT_FALSE(app->isLogin || stored("user_email").isValid());
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
        EXPECT_EQ(logIn(test.email, test.password), loggedIn);
        EXPECT_EQ(presented() + login->txtEmail.text() + login->txtPass.text(), "");
        EXPECT_TRUE(app->isLogin);
        EXPECT_EQ(stored("user_id"), test.id);
        EXPECT_EQ(stored("user_email"), test.email);
        EXPECT_EQ(stored("user_save"), QVariant(test.taps == 1));
    }
}

TEST_F(AccountFormsTest, RegistersWithoutLoggingIn)
{
    present(login)->acctionRegister();
    auto &enrol = presentedAs<MonoCompteRegister>();
    enrol.txtIdentity.setText(QString::fromUtf8("Zoé & 🎧"));
    const QString secret = "un=secret&+"; // the server gets every character
    EXPECT_EQ(send(enrol, "camille@example.org", secret),
              QString::fromUtf8("Alert: Un compte existe déjà avec cette adresse e-mail."));
    EXPECT_EQ(presented(), "MonoCompteRegister");
    EXPECT_EQ(send(enrol, "zoe@example.org", secret), "Alert: User successfully register.");
    EXPECT_EQ(presented(), "MonoCompteController");
    EXPECT_EQ(stored("user_id"), "1043");
    EXPECT_EQ(stored("user_email"), "zoe@example.org");
    EXPECT_FALSE(app->isLogin || stored("user_save").isValid());
    login->acctionMenu();
    EXPECT_EQ(presented(), "");
    EXPECT_EQ(logIn("zoe@example.org", secret), loggedIn);
}

TEST_F(AccountFormsTest, SubscribesToTheNewsletterOnce)
{
    const auto newsletter = std::make_shared<NewsLetterController>();
    EXPECT_EQ(send(*present(newsletter), "ana@example.org", "Ana"),
              "Alert: Merci Ana ! La newsletter d'Orvel Radio vous attend chaque vendredi.");
    EXPECT_EQ(presented() + newsletter->txtEmail.text() + newsletter->txtPass.text(), "");
    EXPECT_EQ(send(*present(newsletter), "ana@example.org", "Ana"),
              QString::fromUtf8("Alert: Cette adresse est déjà inscrite à la newsletter."));
    EXPECT_EQ(presented(), "NewsLetterController");
    EXPECT_FALSE(stored("user_email").isValid());
    newsletter->acctionMenu();
    EXPECT_EQ(presented(), "");
}

TEST_F(AccountFormsTest, SendsASignedFormAndLogsTheAnswerAlone)
{
    ScriptedServer server(answer("{}"));
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
    EXPECT_TRUE(request.contains("\r\nX-Request-Hash: "));
    EXPECT_TRUE(request.endsWith("\r\n\r\nlogin=a%2Bb%40c.fr&password=tr%C3%A8s%20secret"));
    EXPECT_EQ(logged.filter("diction-->").size(), 1);
    EXPECT_TRUE(logged.filter("secret").isEmpty() && logged.filter("c.fr").isEmpty());

    useSite("http://127.0.0.1:1"); // out of reach: told, and the form stays
    app->isLogin = false;
    EXPECT_GT(logIn("camille@example.org", "musique").size(), 7);
    EXPECT_EQ(presented() + login->txtEmail.text(), "MonoCompteControllercamille@example.org");
    EXPECT_FALSE(app->isLogin);
}

TEST_F(AccountFormsTest, TakesWhatIsNoErrorOfItsOwnKindForASuccess)
{
    const auto answer = [this](const QByteArray &body, const QString &told, const QVariant &id) {
        SCOPED_TRACE(body.left(80).constData());
        defaults.setObject("kept", "user_id");
        app->isLogin = false;
        ScriptedServer server(test::answer(body));
        useSite(server.url("/site"));
        EXPECT_EQ(logIn("a@b.fr", " "), told);
        EXPECT_EQ(app->isLogin, told == loggedIn);
        EXPECT_EQ(presented().isEmpty(), told == loggedIn);
        EXPECT_EQ(stored("user_id"), id);
    };
    answer("<html>502 Bad Gateway</html>", loggedIn, {});
    answer(R"({"error":{"message":"non"}})", loggedIn, {}); // not where a login's error stands
    answer(R"({"0":"non","content":{"user_id":null}})", loggedIn, {});
    answer(R"({"content":{"user_id":true}})", loggedIn, {});
    answer(R"({"content":{"user_id":"042"}})", loggedIn, "042");
    answer(R"({"content":{"user_id":12345678901234567890}})", loggedIn, "12345678901234567890");
    const QByteArray longest(64 * 1024, 'x');
    answer(R"({"content":{"user_id":")" + longest + "\"}}", loggedIn, QString::fromUtf8(longest));
    answer(R"({"content":{"user_id":")" + longest + "x\"}}", loggedIn, {});
    answer(R"({"0":{"error":{"message":"non"}},"content":{"user_id":9}})", "Alert: non", "kept");
    answer(R"({"0":{"error":{"message":7}}})", "Alert: ", "kept");
    answer(R"({"0":{}})", "Alert: ", "kept");
}

TEST_F(AccountFormsTest, ALowScreenMovesUpWhileAFieldIsEdited)
{
    const auto enrol = present(std::make_shared<MonoCompteRegister>());
    enrol->txtEmail.setFrame({30, 150.5, 260, 48});
    for (const auto &[height, up] : {std::pair{489.9, 108}, {490.0, 0}}) {
        enrol->view.setFrame({0, 0, 320, height});
        enrol->txtEmail.beginEditing();
        EXPECT_EQ(enrol->lift(), up) << height;
        // Turned meanwhile, it still goes back all the way and no further.
        enrol->view.setFrame({0, 0, 568, 1000 - height});
        enrol->txtEmail.endEditing();
        EXPECT_EQ(enrol->lift(), 0) << height;
    }
}

TEST_F(AccountFormsTest, FormsAreFramedAndGiveUpTheKeyboardOnReturn)
{
    const auto enrol = present(std::make_shared<MonoCompteRegister>());
    EXPECT_EQ(enrol->viewCenter.borderWidth(), 2);
    EXPECT_EQ(enrol->viewCenter.borderColor(), QColor(170, 170, 170));
    QList<bool> wanted;
    for (TextField *field : {&enrol->txtIdentity, &enrol->txtEmail, &enrol->txtPass}) {
        EXPECT_EQ(field->leftImage(), "tblank.png");
        QObject::connect(field, &TextField::focusWanted, [&](bool wants) { wanted << wants; });
        field->returnKey();
    }
    EXPECT_EQ(wanted, QList<bool>({false, false, false}));
    enrol->acctionMenu();
    EXPECT_TRUE(app->revealSideViewController()->isOpen());
    EXPECT_EQ(presented(), "MonoCompteRegister");
    enrol->ShowMessage();
    app->window()->actionSheet()->click(0);
    EXPECT_EQ(presented(), "MessageComposeViewController");
}
