#include "e2e/Listener.h"

#include "app/AppDelegate.h"
#include "platform/foundation/UserDefaults.h"

#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

namespace {

const char *const emailHint = "vous@exemple.fr";

struct AccountEndToEndTest : testing::Test
{
    Listener listener;
    AccountEndToEndTest() { EXPECT_TRUE(listener.waitsToSee("Orvel La Radio")); }
    bool typesLogin(const char *email, const char *password)
    {
        if (!listener.choosesAtMenusEnd("Mon compte") || !listener.waitsToSee("Se connecter") ||
            !listener.touches(emailHint))
            return false;
        listener.types(email);
        listener.presses(Qt::Key_Tab);
        listener.types(password);
        return true;
    }
    static bool remembered()
    {
        return UserDefaults::standardUserDefaults().boolForKey(QStringLiteral("user_save"));
    }
};

} // namespace

TEST_F(AccountEndToEndTest, LogsInAfterAWrongPasswordToBeRemembered)
{
    ASSERT_TRUE(typesLogin("camille@example.org", "musiqu"));
    ASSERT_TRUE(listener.touches("Se souvenir de moi"));
    ASSERT_TRUE(listener.touches("Se connecter"));
    ASSERT_TRUE(listener.acknowledges("Adresse e-mail ou mot de passe incorrect."));
    EXPECT_FALSE(listener.app().isLogin);
    ASSERT_TRUE(listener.touches("musiqu"));
    listener.presses(Qt::Key_End);
    listener.types("e");
    ASSERT_TRUE(listener.touches("Se connecter"));
    ASSERT_TRUE(listener.acknowledges("User successfully Login."));
    EXPECT_TRUE(listener.app().isLogin);
    EXPECT_TRUE(remembered());
    EXPECT_TRUE(listener.sees("Mon compte")); // the menu, with the form gone
    EXPECT_FALSE(listener.sees("Se connecter"));
}

TEST_F(AccountEndToEndTest, LogsInByKeyboardWithoutBeingRemembered)
{
    ASSERT_TRUE(typesLogin("leo@example.org", "guitare"));
    listener.presses(Qt::Key_Tab);
    listener.presses(Qt::Key_Space);
    listener.presses(Qt::Key_Space);
    listener.presses(Qt::Key_Tab);
    listener.presses(Qt::Key_Return);
    ASSERT_TRUE(listener.acknowledges("User successfully Login."));
    EXPECT_TRUE(listener.app().isLogin);
    EXPECT_FALSE(remembered());
}

TEST_F(AccountEndToEndTest, RegistersAndComesBackToTheLogin)
{
    ASSERT_TRUE(listener.choosesAtMenusEnd("Mon compte"));
    ASSERT_TRUE(listener.waitsToSee("Se connecter"));
    ASSERT_TRUE(listener.touches(QString::fromUtf8("Créer un compte")));
    ASSERT_TRUE(listener.waitsToSee(QString::fromUtf8("Créer mon compte")));
    ASSERT_TRUE(listener.touches(QString::fromUtf8("Créer mon compte")));
    ASSERT_TRUE(listener.acknowledges("Please enter the user name"));
    listener.types("Ana"); // the alert has left the keyboard with the field
    listener.presses(Qt::Key_Tab);
    listener.types("ana@example.org");
    listener.presses(Qt::Key_Tab);
    listener.types("secret");
    ASSERT_TRUE(listener.touches(QString::fromUtf8("Créer mon compte")));
    ASSERT_TRUE(listener.acknowledges("User successfully register."));
    EXPECT_TRUE(listener.sees("Se connecter"));
    EXPECT_FALSE(listener.app().isLogin);
}

TEST_F(AccountEndToEndTest, SubscribesToTheNewsletter)
{
    ASSERT_TRUE(listener.choosesAtMenusEnd(QString::fromUtf8("Inscrivez-vous à la Newsletter")));
    ASSERT_TRUE(listener.waitsToSee("S'inscrire"));
    ASSERT_TRUE(listener.touches(emailHint));
    listener.types("ana@example.org");
    ASSERT_TRUE(listener.touches("S'inscrire"));
    ASSERT_TRUE(listener.acknowledges("you must enter in field"));
    listener.types("Ana");
    ASSERT_TRUE(listener.touches("S'inscrire"));
    ASSERT_TRUE(
        listener.acknowledges("Merci Ana ! La newsletter d'Orvel Radio vous attend chaque vendredi."));
    EXPECT_TRUE(listener.waitsNotToSee("S'inscrire"));
}
