#include "platform/ui/NavigationController.h"
#include "platform/ui/RevealSideViewController.h"
#include "shell/ScreenView.h"
#include "shell/Shell.h"

#include <QTest>
#include <gtest/gtest.h>

using namespace orvel;

namespace {

// A screen whose layout is that of a stack around nothing.
std::shared_ptr<NavigationController> stack()
{
    return std::make_shared<NavigationController>(std::make_shared<ViewController>());
}

class ContainersTest : public ::testing::Test
{
protected:
    ContainersTest()
    {
        side->preloadViewController(stack(), RevealSideViewController::Side::Left);
        screens.setRootViewController(side);
        EXPECT_TRUE(shell.show());
        window().resize(375, 667);
        screens.makeKeyAndVisible();
        window().requestActivate();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
    }
    QQuickWindow &window() { return shell.quickWindow(); }
    void pan(int from, int to)
    {
        const int step = to > from ? 10 : -10;
        QTest::mousePress(&window(), Qt::LeftButton, {}, {from, 400});
        for (int x = from; x != to; x += step)
            QTest::mouseMove(&window(), {x, 400}, 5);
        QTest::mouseRelease(&window(), Qt::LeftButton, {}, {to, 400});
        QTest::qWait(400); // the slide
    }
    ScreenView *view(const ViewController &controller)
    {
        for (ScreenView *candidate : window().contentItem()->findChildren<ScreenView *>()) {
            if (candidate->controller() == &controller)
                return candidate;
        }
        return nullptr;
    }

    Window screens;
    std::shared_ptr<RevealSideViewController> side = std::make_shared<RevealSideViewController>(stack());
    Shell shell{screens};
};

TEST_F(ContainersTest, AReplacedScreenLivesUntilItsLayoutIsGone)
{
    ScreenView *centre = view(*side->centerController());
    ASSERT_TRUE(centre && centre->layoutItem());
    EXPECT_EQ(centre->layoutItem()->size(), centre->size());
    const std::weak_ptr<ViewController> old = side->centerController()->weak_from_this();
    const QPointer<QQuickItem> oldLayout = centre->layoutItem();
    side->popViewControllerWithNewCenterController(stack(), false);
    EXPECT_TRUE(oldLayout && !old.expired());
    EXPECT_NE(centre->layoutItem(), oldLayout);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !oldLayout; }));
    ASSERT_TRUE(QTest::qWaitFor([&] { return old.expired(); }));
}

TEST_F(ContainersTest, ThePanelOpensAndClosesByPanTapAndEscape)
{
    const ScreenView *centre = view(*side->centerController());
    const auto centreX = [&] { return centre->mapToScene({0, 0}).x(); };
    pan(60, 110); // too short
    EXPECT_FALSE(side->isOpen());
    EXPECT_EQ(centreX(), 0);
    pan(60, 260);
    EXPECT_TRUE(side->isOpen());
    EXPECT_EQ(centreX(), 319);
    QTest::mouseClick(&window(), Qt::LeftButton, {}, {350, 300});
    EXPECT_FALSE(side->isOpen());
    side->pushOldViewControllerOnDirection(RevealSideViewController::Side::Left, false);
    QTest::keyClick(&window(), Qt::Key_Escape);
    EXPECT_FALSE(side->isOpen());
    side->open(false);
    pan(350, 100);
    EXPECT_FALSE(side->isOpen());
    EXPECT_EQ(centreX(), 0);
    side->setPanInteractionsWhenClosed(RevealSideViewController::PanNone);
    pan(60, 260);
    EXPECT_FALSE(side->isOpen());
}

TEST_F(ContainersTest, AnAlertTakesTapsAndKeysFromWhatLiesBeneath)
{
    side->open(false);
    Window::showAlert(QStringLiteral("Un"), QString(), {QStringLiteral("Non"), QStringLiteral("Oui")});
    Window::showAlert(QStringLiteral("Deux"), QString(), {QStringLiteral("OK")});
    QTest::mouseClick(&window(), Qt::LeftButton, {}, {350, 600});
    EXPECT_EQ(screens.alert()->title(), QStringLiteral("Deux"));
    QTest::keyClick(&window(), Qt::Key_Escape);
    EXPECT_EQ(screens.alert()->title(), QStringLiteral("Un"));
    QTest::keyClick(&window(), Qt::Key_Return);
    EXPECT_EQ(screens.alert(), nullptr);
    EXPECT_TRUE(side->isOpen());
    QTest::keyClick(&window(), Qt::Key_Escape);
    EXPECT_FALSE(side->isOpen());
}

} // namespace
