#include "e2e/Listener.h"

#include "app/AppDelegate.h"
#include "platform/foundation/UserDefaults.h"

#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

TEST(AccountEndToEndTest, RegistersAndLogsInAtTheSecondAttempt)
{
    const QString emailHint = "vous@exemple.fr";
    const QString enrol = QString::fromUtf8("Créer mon compte");
    Listener listener;
    ASSERT_TRUE(listener.waitsToSee("Orvel La Radio"));
    ASSERT_TRUE(listener.choosesAtMenusEnd("Mon compte"));
    ASSERT_TRUE(listener.waitsToSee("Se connecter"));
    ASSERT_TRUE(listener.touches(QString::fromUtf8("Créer un compte")));
    ASSERT_TRUE(listener.waitsToSee(enrol));
    ASSERT_TRUE(listener.touches(enrol));
    ASSERT_TRUE(listener.acknowledges("Please enter the user name"));
    listener.types("Ana"); // the alert has left the keyboard with the field
    listener.presses(Qt::Key_Tab);
    listener.types("ana@example.org");
    listener.presses(Qt::Key_Tab);
    listener.types("secret");
    ASSERT_TRUE(listener.touches(enrol));
    ASSERT_TRUE(listener.acknowledges("User successfully register."));
    ASSERT_TRUE(listener.waitsToSee("Se connecter"));
    EXPECT_FALSE(listener.app().isLogin);

    ASSERT_TRUE(listener.touches(emailHint));
    listener.types("camille@example.org");
    listener.presses(Qt::Key_Tab);
    listener.types("musiqu");
    ASSERT_TRUE(listener.touches("Se souvenir de moi"));
    ASSERT_TRUE(listener.touches("Se connecter"));
    ASSERT_TRUE(listener.acknowledges("Adresse e-mail ou mot de passe incorrect."));
    EXPECT_FALSE(listener.app().isLogin);
    ASSERT_TRUE(listener.touches("musiqu"));
    listener.presses(Qt::Key_End);
    listener.types("e");
    listener.presses(Qt::Key_Tab); // past the box
    listener.presses(Qt::Key_Tab);
    listener.presses(Qt::Key_Return);
    ASSERT_TRUE(listener.acknowledges("User successfully Login."));
    EXPECT_TRUE(listener.app().isLogin);
    EXPECT_TRUE(UserDefaults::standardUserDefaults().boolForKey("user_save"));
    EXPECT_FALSE(listener.sees("Se connecter"));
}
