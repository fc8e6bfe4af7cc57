#include "e2e/Listener.h"

#include "app/AppDelegate.h"

#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

TEST(AccountEndToEndTest, RegistersFromTheMenu)
{
    const QString enrol = QString::fromUtf8("Créer mon compte");
    Listener listener;
    ASSERT_TRUE(listener.choosesInMenu("Mon compte", true));
    ASSERT_TRUE(listener.waitsToSee("Se connecter"));
    ASSERT_TRUE(listener.touches(QString::fromUtf8("Créer un compte")));
    ASSERT_TRUE(listener.waitsToSee(enrol));
    ASSERT_TRUE(listener.touches(enrol));
    ASSERT_TRUE(listener.acknowledges("Please enter the user name"));
    listener.types("Ana\tana@example.org\tsecret"); // the alert has left the keyboard with the field
    ASSERT_TRUE(listener.touches(enrol));
    ASSERT_TRUE(listener.acknowledges("User successfully register."));
    ASSERT_TRUE(listener.waitsToSee("Se connecter"));
    EXPECT_FALSE(listener.app().isLogin);
}
