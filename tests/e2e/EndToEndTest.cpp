#include "e2e/Listener.h"

#include "app/AppDelegate.h"

#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

namespace {

struct EndToEndTest : testing::Test
{
    Listener listener;
};

} // namespace

TEST_F(EndToEndTest, ATapOnARowIsHeardAndItsTitlesAreSeen)
{
    EXPECT_TRUE(listener.waitsNotToSee("Please Wait..."));
    EXPECT_TRUE(listener.sees("Choisissez une radio"));
    ASSERT_TRUE(listener.touches("Orvel La Radio"));
    ASSERT_TRUE(listener.waitsToSee("Toute la musique qu'on aime, en direct"));
    EXPECT_TRUE(listener.waitsFor([&] { return listener.plays(); }));
    // A title and an artist as the stream has told them.
    ASSERT_TRUE(listener.waitsFor([&] { return !listener.app().gl3.isEmpty(); }));
    EXPECT_TRUE(listener.waitsToSee(listener.app().gl3));
    EXPECT_TRUE(listener.waitsToSee(listener.app().gl4));
    EXPECT_FALSE(listener.sees("Choisissez une radio"));
    EXPECT_TRUE(listener.waitsFor(Listener::isHeard));
    // The rows have asked for theirs.
    EXPECT_TRUE(listener.waitsFor([&] { return !listener.texts().filter(" - ").isEmpty(); }));
    for (const QString service : {"Facebook", "Twitter"}) {
        ASSERT_TRUE(listener.touches("Partager sur " + service));
        ASSERT_TRUE(listener.waitsToSee("Continuer sur " + service));
        listener.presses(Qt::Key_Escape);
        ASSERT_TRUE(listener.waitsNotToSee("Continuer sur " + service));
    }
    ASSERT_TRUE(listener.touches("Pause"));
    EXPECT_FALSE(listener.plays());
    ASSERT_TRUE(listener.touches("Lecture"));
    EXPECT_TRUE(listener.waitsFor([&] { return listener.plays(); }));
}

TEST_F(EndToEndTest, EveryKindOfStreamPlays)
{
    int heard = 0;
    for (const QString &id : listener.station().radioIds()) {
        const QString name = listener.station().radioName(id);
        if (name == "Orvel Événements")
            break; // off the air; the network's radios follow
        listener.scrollsTo(352 + 60 * heard - 60);
        ASSERT_TRUE(listener.waitsToSee(name));
        ASSERT_TRUE(listener.touches(name));
        EXPECT_TRUE(listener.waitsFor([&] { return listener.plays(); })) << name.toStdString();
        ++heard;
    }
    EXPECT_GE(heard, 8);
}

TEST_F(EndToEndTest, TheMenuIsUsedByKeyboard)
{
    ASSERT_TRUE(listener.waitsNotToSee("Please Wait..."));
    listener.presses(Qt::Key_Tab); // the menu button, as the screen's first
    listener.presses(Qt::Key_Return);
    ASSERT_TRUE(listener.waitsFor([&] {
        const QQuickItem *const focus = listener.window().activeFocusItem();
        return focus && focus->property("placeholderText") == "Rechercher";
    }));
    ASSERT_TRUE(listener.waitsToSee("Favoris"));
    listener.presses(Qt::Key_Down);
    listener.presses(Qt::Key_Down);
    listener.presses(Qt::Key_Return);
    EXPECT_TRUE(listener.waitsToSee("Pas encore de favoris"));
}
