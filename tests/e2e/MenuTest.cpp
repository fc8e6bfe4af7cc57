#include "e2e/Listener.h"

#include "api/StationConfiguration.h"
#include "app/AppDelegate.h"
#include "platform/system/RecordingServices.h"

#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

namespace {

const char *const notThere = "Cette rubrique n'est pas encore disponible.";
const QString contact = "Contacter la station";

struct MenuEndToEndTest : testing::Test
{
    Listener listener;
    std::shared_ptr<RecordingServices> system = std::make_shared<RecordingServices>();

    MenuEndToEndTest()
    {
        SystemServices::use(system);
        EXPECT_TRUE(listener.waitsToSee("Orvel La Radio"));
    }
    ~MenuEndToEndTest() override { SystemServices::use(nullptr); }

    bool choosesContact(const QString &button)
    {
        return listener.touches(contact) && listener.waitsToSee("Please Select Options") &&
               listener.touches(button) && listener.waitsNotToSee("Please Select Options");
    }
    bool leavesComposer()
    {
        return listener.waitsToSee("Annuler") && listener.touches("Annuler") &&
               listener.waitsNotToSee("Annuler");
    }
};

} // namespace

TEST_F(MenuEndToEndTest, PagesFrequenciesAndTheSearchBar)
{
    ASSERT_TRUE(listener.choosesAtMenusEnd("Site Web"));
    EXPECT_EQ(system->opened, QStringList{listener.station().siteUrl()});
    ASSERT_TRUE(listener.touches(QString::fromUtf8("Fréquences")));
    ASSERT_TRUE(listener.waitsToSee("Aix-en-Provence"));
    EXPECT_TRUE(listener.waitsToSee("101.7 FM"));
    ASSERT_TRUE(listener.touches("Menu"));
    ASSERT_TRUE(listener.touches("Rechercher"));
    listener.types("jazz");
    ASSERT_TRUE(listener.waitsToSee("jazz"));
    listener.presses(Qt::Key_Return);
    ASSERT_TRUE(listener.waitsToSee(notThere));
    EXPECT_FALSE(listener.sees("jazz"));
    listener.presses(Qt::Key_Escape);
    ASSERT_TRUE(listener.waitsNotToSee(notThere));
}

TEST_F(MenuEndToEndTest, EveryRowOpensItsScreenItsPageOrSaysThatItIsNotThere)
{
    for (const char *row : {"Titre diffusés", "Top 10", "News", "Sons", "Vidéos", "Concours", "Agenda"}) {
        ASSERT_TRUE(listener.choosesInMenu(row)) << row;
        ASSERT_TRUE(listener.waitsToSee(notThere)) << row;
        listener.presses(Qt::Key_Escape);
        ASSERT_TRUE(listener.waitsNotToSee(notThere)) << row;
    }
    const char *const ownScreens[][2] = {{"Mon compte", "Se connecter"},
                                         {"Inscrivez-vous à la Newsletter", "S'inscrire"},
                                         {"Grille des programmes", notThere},
                                         {"Mentions légales", notThere}};
    for (const auto &[row, shown] : ownScreens) {
        ASSERT_TRUE(listener.choosesAtMenusEnd(row)) << row;
        ASSERT_TRUE(listener.waitsToSee(shown)) << row;
        listener.presses(Qt::Key_Escape);
        ASSERT_TRUE(listener.waitsNotToSee(shown)) << row;
    }
    for (const char *service : {"Facebook", "Twitter", "Google+", "Instagram"})
        ASSERT_TRUE(listener.choosesAtMenusEnd(QString("Orvel Radio sur ") + service)) << service;
    const StationConfiguration &station = StationConfiguration::current();
    EXPECT_EQ(system->opened, QStringList({station.facebookPage, station.twitterPage, station.googlePage,
                                           station.instagramPage}));
    ASSERT_TRUE(listener.choosesInMenu("Favoris"));
    ASSERT_TRUE(listener.waitsToSee("Pas encore de favoris"));
    ASSERT_TRUE(listener.choosesInMenu("Radios"));
    EXPECT_TRUE(listener.waitsToSee("Choisissez une radio"));
}

TEST_F(MenuEndToEndTest, EachNumberingOfTheContactSheetDoesItsOwn)
{
    // One later on the web radios' screen: the cancel button writes a mail, and so does Escape.
    ASSERT_TRUE(choosesContact("SMS"));
    EXPECT_FALSE(listener.sees("Annuler"));
    ASSERT_TRUE(choosesContact("Telephone"));
    EXPECT_TRUE(listener.waitsToSee("TRV votre texte"));
    ASSERT_TRUE(leavesComposer());
    ASSERT_TRUE(choosesContact("Mail"));
    ASSERT_EQ(system->opened.size(), 1);
    EXPECT_TRUE(system->opened[0].startsWith("tel://"));
    ASSERT_TRUE(listener.touches(contact));
    ASSERT_TRUE(listener.waitsToSee("Please Select Options"));
    listener.presses(Qt::Key_Escape);
    EXPECT_TRUE(listener.waitsToSee("ORVEL Application"));
    ASSERT_TRUE(leavesComposer());
    EXPECT_TRUE(listener.waitsToSee("Mail cancelled"));
    listener.presses(Qt::Key_Escape);
    ASSERT_TRUE(listener.waitsNotToSee("Mail cancelled"));

    ASSERT_TRUE(listener.choosesAtMenusEnd(QString::fromUtf8("Fréquences")));
    ASSERT_TRUE(listener.waitsToSee("Aix-en-Provence"));
    ASSERT_TRUE(choosesContact("SMS"));
    EXPECT_TRUE(listener.waitsToSee("TRV votre texte"));
    ASSERT_TRUE(listener.touches("Envoyer"));
    ASSERT_TRUE(listener.waitsNotToSee("Envoyer"));
    EXPECT_EQ(system->messages.size(), 1);
    ASSERT_TRUE(choosesContact("Cancel"));
    EXPECT_FALSE(listener.sees("Annuler"));
}
