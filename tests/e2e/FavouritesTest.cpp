#include "e2e/Listener.h"

#include "app/AppDelegate.h"
#include "platform/foundation/UserDefaults.h"

#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

namespace {

const QString laRadio = "Orvel La Radio";
const QString electro = "Orvel Électro";
const QString question = "Are you sure, you want to unfavourite?";

QString emptyHeart(const QString &radio) { return "Ajouter aux favoris : " + radio; }
QString fullHeart(const QString &radio) { return "Retirer des favoris : " + radio; }

} // namespace

TEST(FavouritesEndToEndTest, AreKeptOnceLoggedInPlayedAndRemoved)
{
    for (const char *name : {"arrayFav", "user_save"})
        UserDefaults::standardUserDefaults().removeObjectForKey(name);
    Listener listener;
    ASSERT_TRUE(listener.touches(emptyHeart(laRadio)));
    ASSERT_TRUE(listener.acknowledges("You must login before do favriout/unfavriout"));
    ASSERT_TRUE(listener.touches("vous@exemple.fr"));
    listener.types("camille@example.org\tmusiqu");
    ASSERT_TRUE(listener.touches("Se souvenir de moi"));
    ASSERT_TRUE(listener.touches("Se connecter"));
    ASSERT_TRUE(listener.acknowledges("Adresse e-mail ou mot de passe incorrect."));
    EXPECT_FALSE(listener.app().isLogin);
    ASSERT_TRUE(listener.touches("musiqu"));
    listener.presses(Qt::Key_End);
    listener.types("e\t\t"); // past the box
    listener.presses(Qt::Key_Return);
    ASSERT_TRUE(listener.acknowledges("User successfully Login."));
    EXPECT_TRUE(listener.app().isLogin);
    EXPECT_TRUE(UserDefaults::standardUserDefaults().boolForKey("user_save"));
    EXPECT_FALSE(listener.sees("Se connecter"));
    for (const QString &radio : {laRadio, electro}) {
        ASSERT_TRUE(listener.touches(emptyHeart(radio)));
        ASSERT_TRUE(listener.waitsToSee(fullHeart(radio)));
    }

    ASSERT_TRUE(listener.choosesInMenu("Favoris"));
    ASSERT_TRUE(listener.waitsToSee(fullHeart(electro)));
    EXPECT_FALSE(listener.sees(fullHeart(laRadio)) || listener.sees("Lecture"));
    ASSERT_TRUE(listener.touches(electro));
    ASSERT_TRUE(listener.waitsFor([&] { return listener.plays(); }));
    // The first press after a choice asks for what plays already.
    ASSERT_TRUE(listener.touches("Lecture"));
    ASSERT_TRUE(listener.touches("Pause"));
    EXPECT_EQ(listener.app().radio()->radioState(), RadioStateStopped);
    for (const char *answer : {"Cancel", "Yes"}) {
        ASSERT_TRUE(listener.touches(fullHeart(electro)));
        ASSERT_TRUE(listener.waitsToSee(question));
        ASSERT_TRUE(listener.touches(answer));
        ASSERT_TRUE(listener.waitsNotToSee(question));
    }
    EXPECT_TRUE(listener.waitsToSee("Pas encore de favoris"));
    ASSERT_TRUE(listener.choosesInMenu("Radios"));
    EXPECT_TRUE(listener.waitsToSee(emptyHeart(electro)));
}
