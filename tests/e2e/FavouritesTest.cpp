#include "e2e/Listener.h"

#include "app/AppDelegate.h"
#include "app/FavouriteStore.h"
#include "platform/foundation/UserDefaults.h"

#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

namespace {

const QString laRadio = "Orvel La Radio";
const QString electro = "Orvel Électro";
const QString none = "Pas encore de favoris";
const QString question = "Are you sure, you want to unfavourite?";

QString emptyHeart(const QString &radio) { return "Ajouter aux favoris : " + radio; }
QString fullHeart(const QString &radio) { return "Retirer des favoris : " + radio; }

struct FavouritesEndToEndTest : testing::Test
{
    UserDefaults &defaults = UserDefaults::standardUserDefaults();
    Listener listener;

    FavouritesEndToEndTest()
    {
        forgetAll();
        EXPECT_TRUE(listener.waitsToSee(laRadio));
    }
    ~FavouritesEndToEndTest() override { forgetAll(); }

    void forgetAll()
    {
        for (const char *name : {"arrayFav", "user_save"})
            defaults.removeObjectForKey(name);
    }
    bool adds(const QString &radio)
    {
        return listener.touches(emptyHeart(radio)) && listener.waitsToSee(fullHeart(radio));
    }
    // Asked to take a radio away: no the first time, yes the second.
    bool removesOnSecondThought(const QString &radio)
    {
        const auto answers = [&](const char *answer) {
            return listener.touches(fullHeart(radio)) && listener.waitsToSee(question) &&
                   listener.touches(answer) && listener.waitsNotToSee(question);
        };
        return answers("Cancel") && listener.sees(fullHeart(radio)) && answers("Yes") &&
               listener.waitsNotToSee(fullHeart(radio));
    }
    QStringList stored() const
    {
        QStringList titles;
        for (const JsonValue &radio : FavouriteStore().radios().value_or(FavouriteStore::Radios()))
            titles << radio["title"].text();
        return titles;
    }
};

} // namespace

TEST_F(FavouritesEndToEndTest, AreKeptFromTheSecondOnPlayedAndRemoved)
{
    ASSERT_TRUE(listener.touches(emptyHeart(laRadio)));
    ASSERT_TRUE(listener.acknowledges("You must login before do favriout/unfavriout"));
    ASSERT_TRUE(listener.touches("vous@exemple.fr"));
    listener.types("camille@example.org");
    listener.presses(Qt::Key_Tab);
    listener.types("musique");
    ASSERT_TRUE(listener.touches("Se connecter"));
    ASSERT_TRUE(listener.acknowledges("User successfully Login."));
    EXPECT_FALSE(FavouriteStore().radios());

    ASSERT_TRUE(adds(laRadio));
    ASSERT_TRUE(adds(electro));
    EXPECT_EQ(stored(), QStringList(electro));
    ASSERT_TRUE(listener.choosesInMenu("Favoris"));
    ASSERT_TRUE(listener.waitsToSee(fullHeart(electro)));
    EXPECT_FALSE(listener.sees(fullHeart(laRadio)));
    ASSERT_TRUE(listener.choosesInMenu("Radios"));
    ASSERT_TRUE(listener.waitsToSee(fullHeart(electro)));
    EXPECT_TRUE(listener.sees(emptyHeart(laRadio)));

    ASSERT_TRUE(adds(laRadio));
    ASSERT_TRUE(listener.choosesInMenu("Favoris"));
    ASSERT_TRUE(listener.waitsToSee(fullHeart(laRadio)));
    EXPECT_FALSE(listener.sees("Lecture"));
    ASSERT_TRUE(listener.touches(electro));
    ASSERT_TRUE(listener.waitsFor([&] { return listener.plays(); }));
    // The first press after a choice asks for what plays already.
    ASSERT_TRUE(listener.touches("Lecture"));
    ASSERT_TRUE(listener.touches("Pause"));
    EXPECT_EQ(listener.app().radio()->radioState(), RadioStateStopped);
    ASSERT_TRUE(removesOnSecondThought(laRadio));
    EXPECT_EQ(stored(), QStringList(electro));
    ASSERT_TRUE(removesOnSecondThought(electro));
    EXPECT_TRUE(listener.waitsToSee(none));
    EXPECT_EQ(stored(), QStringList());
    ASSERT_TRUE(listener.choosesInMenu("Radios"));
    EXPECT_TRUE(listener.waitsToSee(emptyHeart(electro)));
}
