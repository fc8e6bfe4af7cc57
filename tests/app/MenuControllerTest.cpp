#include "app/AppFixture.h"

using namespace orvel;
using namespace orvel::test;

namespace {

struct MenuControllerTest : AppFixture
{
    QString rowTitle(int section, int row)
    {
        const auto cell = menu().cellForRowAtIndexPath(menu().tableCont, {section, row});
        return std::static_pointer_cast<MenuCell>(cell)->textLabel.text();
    }
};

} // namespace

TEST_F(MenuControllerTest, RowsGetTheirTitlesHalfASecondLater)
{
    EXPECT_EQ(rowTitle(0, 0), "(null)");
    clock.turn(0.49);
    EXPECT_EQ(rowTitle(3, 7), "(null)");
    clock.turn(0.02);
    EXPECT_EQ(rowTitle(0, 2), QString::fromUtf8("Titre diffusés"));
    EXPECT_EQ(rowTitle(1, 0), "News");
    EXPECT_EQ(rowTitle(2, 1), QString::fromUtf8("Fréquences"));
    EXPECT_EQ(rowTitle(3, 7), QString::fromUtf8("Mentions légales"));
    const int counts[] = {4, 5, 2, 8, 0};
    for (int section = 0; section < 5; ++section)
        EXPECT_EQ(menu().numberOfRowsInSection(menu().tableCont, section), counts[section]);
    EXPECT_EQ(menu().tableCont.elements()->rowCount(), 0); // nothing is in view yet
}

TEST_F(MenuControllerTest, RadiosBringsAFreshScreenAndKeepsTheMenu)
{
    clock.turn(0.05);
    MenuController *const before = &menu();
    app->revealSideViewController()->open(false);
    menu().tableCont.selectRow(0, 0);
    EXPECT_EQ(&menu(), before);
    EXPECT_FALSE(app->revealSideViewController()->isOpen());
    EXPECT_EQ(radios().lblTitle.text(), "(null)"); // chosen before the titles were there
    clock.turn(1);
    menu().tableCont.selectRow(0, 0);
    EXPECT_EQ(radios().lblTitle.text(), "Radios");
}

TEST_F(MenuControllerTest, WhatIsMissingSaysSo)
{
    menu().tableCont.selectRow(3, 7);
    ASSERT_NE(alert(), nullptr);
    EXPECT_EQ(alert()->message(), "Cette rubrique n'est pas encore disponible.");
    alert()->click(0);
    menu().searchBar.setText("jazz");
    menu().searchBar.searchButtonClicked();
    EXPECT_EQ(menu().searchBar.text(), "");
    EXPECT_NE(alert(), nullptr);
}
