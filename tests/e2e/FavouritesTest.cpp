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

TEST(FavouritesEndToEndTest, AreKeptFromTheSecondOnPlayedAndRemoved)
{
    for (const char *name : {"arrayFav", "user_save"})
        UserDefaults::standardUserDefaults().removeObjectForKey(name);
    Listener listener;
    ASSERT_TRUE(listener.touches(emptyHeart(laRadio)));
    ASSERT_TRUE(listener.acknowledges("You must login before do favriout/unfavriout"));
    ASSERT_TRUE(listener.touches("vous@exemple.fr"));
    listener.types("camille@example.org");
    listener.presses(Qt::Key_Tab);
    listener.types("musique");
    ASSERT_TRUE(listener.touches("Se connecter"));
    ASSERT_TRUE(listener.acknowledges("User successfully Login."));
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
