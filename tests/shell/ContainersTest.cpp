#include "layouts/kit/ScreenView.h"
#include "platform/ui/containers/NavigationController.h"
#include "platform/ui/containers/RevealSideViewController.h"
#include "shell/ShellFixture.h"

using namespace orvel;

namespace {

// A screen whose layout is that of a stack around nothing.
std::shared_ptr<NavigationController> stack()
{
    return std::make_shared<NavigationController>(std::make_shared<ViewController>());
}

struct ContainersTest : test::ShellFixture
{
    std::shared_ptr<RevealSideViewController> side = std::make_shared<RevealSideViewController>(stack());

    ContainersTest()
    {
        side->preloadViewController(stack(), RevealSideViewController::Side::Left);
        screens.setRootViewController(side);
        show();
    }
    void pan(int from, int to, int milliseconds = 100)
    {
        drag({from, 400}, {to, 400}, milliseconds);
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
};

} // namespace

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
    pan(60, 130, 400); // too short, and too slow for a fling
    EXPECT_FALSE(side->isOpen());
    EXPECT_EQ(centreX(), 0);
    pan(60, 130);
    EXPECT_TRUE(side->isOpen());
    EXPECT_EQ(centreX(), 319);
    tap({350, 300});
    EXPECT_FALSE(side->isOpen());
    side->pushOldViewControllerOnDirection(RevealSideViewController::Side::Left, false);
    key(Qt::Key_Escape);
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
    Window::showAlert("Un", QString(), {"Non", "Oui"});
    Window::showAlert("Deux", QString(), {"OK"});
    tap({350, 600});
    EXPECT_EQ(screens.alert()->title(), "Deux");
    key(Qt::Key_Escape);
    EXPECT_EQ(screens.alert()->title(), "Un");
    key(Qt::Key_Return);
    EXPECT_EQ(screens.alert(), nullptr);
    EXPECT_TRUE(side->isOpen());
    key(Qt::Key_Escape);
    EXPECT_FALSE(side->isOpen());
}
