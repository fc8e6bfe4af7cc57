#include "e2e/Listener.h"

#include "app/AppDelegate.h"
#include "app/FavouriteStore.h"
#include "platform/foundation/UserDefaults.h"
#include "platform/system/RecordingServices.h"

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
    std::shared_ptr<RecordingServices> system = std::make_shared<RecordingServices>();
    Listener listener;

    FavouritesEndToEndTest()
    {
        SystemServices::use(system);
        forgetAll();
        EXPECT_TRUE(listener.waitsToSee(laRadio));
    }
    ~FavouritesEndToEndTest() override
    {
        SystemServices::use(nullptr);
        forgetAll();
    }

    void forgetAll()
    {
        for (const char *name : {"arrayFav", "user_save"})
            defaults.removeObjectForKey(name);
    }
    // Somebody who logged in earlier and has had favourites before.
    void isKnown()
    {
        defaults.setObject(true, "user_save");
        defaults.setObject(QByteArray("[]"), "arrayFav");
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
    // What stands under a radio's name in the list.
    QString lineOf(const QString &radio)
    {
        const QStringList texts = listener.texts();
        return texts.value(texts.lastIndexOf(radio) + 1);
    }
};

} // namespace

TEST_F(FavouritesEndToEndTest, AHeartLeadsToTheLoginAndTheFirstOneIsNotKept)
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
}

TEST_F(FavouritesEndToEndTest, AFavouritePlaysAndPausesFromItsBar)
{
    isKnown();
    ASSERT_TRUE(adds(electro));
    ASSERT_TRUE(listener.choosesInMenu("Favoris"));
    ASSERT_TRUE(listener.waitsToSee(fullHeart(electro)));
    EXPECT_FALSE(listener.sees("Lecture"));
    ASSERT_TRUE(listener.touches(electro));
    ASSERT_TRUE(listener.waitsFor([&] { return listener.plays(); }));
    // The first press after a choice asks for what plays already.
    ASSERT_TRUE(listener.touches("Lecture"));
    ASSERT_TRUE(listener.touches("Pause"));
    EXPECT_EQ(listener.app().radio()->radioState(), RadioStateStopped);
    ASSERT_TRUE(listener.touches("Lecture"));
    EXPECT_TRUE(listener.waitsFor([&] { return listener.plays(); }));
}

TEST_F(FavouritesEndToEndTest, ARadioGoesFromTheFavouritesAndFromTheList)
{
    isKnown();
    ASSERT_TRUE(adds(laRadio));
    ASSERT_TRUE(adds(electro));
    ASSERT_TRUE(removesOnSecondThought(laRadio));
    EXPECT_TRUE(listener.waitsToSee(emptyHeart(laRadio)));
    EXPECT_EQ(stored(), QStringList(electro));
    ASSERT_TRUE(listener.choosesInMenu("Favoris"));
    ASSERT_TRUE(listener.waitsToSee(fullHeart(electro)));
    ASSERT_TRUE(removesOnSecondThought(electro));
    EXPECT_TRUE(listener.waitsToSee(none));
    EXPECT_EQ(stored(), QStringList());
    ASSERT_TRUE(listener.choosesInMenu("Radios"));
    EXPECT_TRUE(listener.waitsToSee(emptyHeart(electro)));
}

TEST_F(FavouritesEndToEndTest, TitlesComeOnTheirOwn)
{
    EXPECT_TRUE(listener.waitsFor([&] { return lineOf(electro).contains(" - "); }));
    // On past the radios that have none to tell: behind playlists, or with a bare ICY answer.
    listener.scrollsTo(352);
    EXPECT_TRUE(listener.waitsFor([&] { return lineOf("Orvel Classique").contains(" - "); }));
    EXPECT_FALSE(listener.app().radio());
}

TEST_F(FavouritesEndToEndTest, SharesWhatPlays)
{
    ASSERT_TRUE(listener.touches(laRadio));
    ASSERT_TRUE(listener.waitsFor([&] { return listener.plays(); }));
    for (const QString service : {"Facebook", "Twitter"}) {
        const QString share = "Partager sur " + service;
        const QString send = "Continuer sur " + service;
        ASSERT_TRUE(listener.touches(share));
        ASSERT_TRUE(listener.waitsToSee(send));
        listener.presses(Qt::Key_Escape);
        ASSERT_TRUE(listener.waitsNotToSee(send));
        EXPECT_EQ(system->opened, QStringList());
        ASSERT_TRUE(listener.touches(share));
        ASSERT_TRUE(listener.waitsToSee(send));
        ASSERT_TRUE(listener.touches(send));
        ASSERT_TRUE(listener.waitsToSee(service + " Post Successfull"));
        listener.presses(Qt::Key_Escape);
        ASSERT_TRUE(listener.waitsNotToSee(service + " Post Successfull"));
        ASSERT_EQ(system->opened.size(), 1);
        EXPECT_TRUE(system->opened.takeFirst().contains("Orvel%20La%20Radio"));
    }
    EXPECT_TRUE(listener.plays());
}
