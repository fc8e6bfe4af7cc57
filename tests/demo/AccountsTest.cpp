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

TEST(AccountsTest, TellsWhatIsWrongWhereTheEndpointPutsIt)
{
    Accounts accounts;
    const std::tuple<QByteArray, const char *, const char *> cases[] = {
        // no message: accepted
        {"login", "&&=x&login&%zz=%", "Adresse e-mail ou mot de passe incorrect."},
        {"register", "username=%20&email=a%40b.fr&password=secret",
         "Le nom d'utilisateur doit compter de 1 à 60 caractères."},
        {"register", "username=a&email=a%40&password=secret", "Cette adresse e-mail n'est pas valable."},
        {"register", "username=a&email=a%40b.fr&password=court",
         "Le mot de passe doit compter au moins 6 caractères."},
        {"register", "username=camille&email=c%40example.org&password=secret",
         "Ce nom d'utilisateur est déjà pris."},
        {"newsletter", "name=&email=a%40b.fr", "Le nom doit compter de 1 à 60 caractères."},
        {"newsletter", "name=A&email=a%40b.fr", nullptr},
        {"register", "username=Zo%C3%A9+B&email=zoe%40example.org&password=un%20%26%20deux%2B", nullptr},
        {"login", "login=ZOE@example.org&password=un+%26+deux%2b", nullptr},
    };
    for (const auto &[endpoint, form, message] : cases) {
        const QJsonValue answer = ask(accounts, endpoint, form);
        const QJsonValue error = endpoint == "register" ? answer["error"] : answer["0"]["error"];
        EXPECT_EQ(error["message"].toString(), QString::fromUtf8(message)) << form;
        EXPECT_EQ(answer["content"].isUndefined(), message != nullptr) << form;
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
