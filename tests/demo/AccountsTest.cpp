#include "demo/Accounts.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

using namespace orvel::demo;

namespace {

QJsonValue ask(Accounts &accounts, const QByteArray &endpoint, const QByteArray &form)
{
    return QJsonDocument::fromJson(accounts.answer(endpoint, form)->body).object();
}

} // namespace

TEST(AccountsTest, KnowsItsUsersFromTheStartAndThoseWhoRegister)
{
    Accounts accounts;
    const auto idOf = [&](const char *form) { return ask(accounts, "login", form)["content"]["user_id"]; };
    EXPECT_EQ(idOf("login=camille%40example.org&password=musique"), QJsonValue("1041"));
    EXPECT_EQ(idOf("login=LEO%40Example.org&password=guitare"), QJsonValue(1042));
    const char *const form = "username=Zo%C3%A9+B&email=zoe%40example.org&password=un%20%26%20deux%2B";
    EXPECT_EQ(ask(accounts, "register", form)["content"]["user_id"], QJsonValue("1043"));
    EXPECT_EQ(ask(accounts, "login", "login=zoe@example.org&password=un+%26+deux%2b")["content"]["username"],
              QJsonValue(QString::fromUtf8("Zoé B")));
    EXPECT_FALSE(accounts.answer("webradio", {}));
}

TEST(AccountsTest, TellsWhatIsWrongWhereTheEndpointPutsIt)
{
    Accounts accounts;
    const char *const wrong = "Adresse e-mail ou mot de passe incorrect.";
    const char *const badEmail = "Cette adresse e-mail n'est pas valable.";
    const struct
    {
        const char *endpoint;
        const char *form;
        const char *message; // none: accepted
    } cases[] = {
        {"login", "login=camille%40example.org&password=Musique", wrong},
        {"login", "login=inconnu%40example.org&password=musique", wrong},
        {"login", "", wrong},
        {"login", "&&=x&login&%zz=%", wrong},
        {"register", "username=%20&email=a%40b.fr&password=secret",
         "Le nom d'utilisateur doit compter de 1 à 60 caractères."},
        {"register", "username=a&email=a%40&password=secret", badEmail},
        {"register", "username=a&email=a%40b.fr&password=court",
         "Le mot de passe doit compter au moins 6 caractères."},
        {"register", "username=a&email=CAMILLE%40example.org&password=secret",
         "Un compte existe déjà avec cette adresse e-mail."},
        {"register", "username=camille&email=c%40example.org&password=secret",
         "Ce nom d'utilisateur est déjà pris."},
        {"newsletter", "name=&email=a%40b.fr", "Le nom doit compter de 1 à 60 caractères."},
        {"newsletter", "name=A&email=", badEmail},
        {"newsletter", "name=A&email=a%40b.fr", nullptr},
        {"newsletter", "name=A&email=A%40b.fr", "Cette adresse est déjà inscrite à la newsletter."},
    };
    for (const auto &test : cases) {
        const QJsonValue answer = ask(accounts, test.endpoint, test.form);
        const bool wraps = qstrcmp(test.endpoint, "register") != 0;
        const QJsonValue error = wraps ? answer["0"]["error"] : answer["error"];
        EXPECT_EQ(error["message"].toString(), QString::fromUtf8(test.message)) << test.form;
        EXPECT_EQ(answer["content"].isUndefined(), test.message != nullptr) << test.form;
    }
}

TEST(AccountsTest, DoesNotGrowWithoutEnd)
{
    Accounts accounts;
    int refused = 0;
    for (int i = 0; i < 1100; ++i) {
        const QByteArray form = QByteArray("username=u%&email=u%%40b.fr&password=secret&name=u")
                                    .replace("u%", "u" + QByteArray::number(i));
        refused += accounts.answer("register", form)->status == 503;
        refused += accounts.answer("newsletter", form)->status == 503;
    }
    EXPECT_EQ(refused, 102 + 100);
}
