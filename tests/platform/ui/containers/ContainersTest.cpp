#include "platform/ui/containers/NavigationController.h"
#include "platform/ui/containers/RevealSideViewController.h"
#include "platform/ui/containers/Window.h"

#include <gtest/gtest.h>

using namespace orvel;

namespace {

constexpr auto left = RevealSideViewController::Side::Left;

class Screen : public ViewController
{
    Q_OBJECT
public:
    Screen(const QString &name, QStringList &log) : m_name(name), m_log(log) {}

protected:
    void viewDidLoad() override { m_log << m_name + " load"; }
    void viewWillAppear() override { m_log << m_name + " appear"; }
    void viewDidDisappear() override { m_log << m_name + " disappear"; }

private:
    QString m_name;
    QStringList &m_log;
};

class MenuScreen : public Screen
{
    Q_OBJECT
public:
    using Screen::Screen;
};

class ContainersTest : public ::testing::Test
{
protected:
    template<class Shown = Screen>
    std::shared_ptr<Shown> screen(const QString &name)
    {
        return std::make_shared<Shown>(name, log);
    }
    void show(const std::shared_ptr<ViewController> &root)
    {
        window.setRootViewController(root);
        window.makeKeyAndVisible();
        happened();
    }
    // What has happened since the last call.
    QStringList happened() { return std::exchange(log, {}); }

    QStringList log;
    Window window;
};

} // namespace

TEST_F(ContainersTest, AScreenLoadsOnceAndItsLayoutBearsItsName)
{
    const auto a = screen("a");
    EXPECT_EQ(a->layoutName(), "Screen");
    EXPECT_EQ(NavigationController(a).layoutName(), "NavigationController");
    window.setRootViewController(a);
    EXPECT_FALSE(a->isVisible()) << "a window that is not key shows nothing";
    window.makeKeyAndVisible();
    window.makeKeyAndVisible();
    EXPECT_EQ(happened(), QStringList({"a load", "a appear"}));
}

TEST_F(ContainersTest, APresentedScreenCoversWhatIsBeneath)
{
    const auto a = screen("a"), b = screen("b"), c = screen("c");
    show(a);
    a->presentViewController(b, false);
    a->presentViewController(b, false); // already there
    b->presentViewController(c, false);
    EXPECT_EQ(window.presentedViewController(), c.get());
    EXPECT_EQ(happened(),
              QStringList({"b load", "b appear", "a disappear", "c load", "c appear", "b disappear"}));

    a->dismissViewController(false);
    EXPECT_EQ(window.presentedViewController(), b.get());
    EXPECT_EQ(happened(), QStringList({"b appear", "c disappear"}));
    a->dismissViewController(false);
    a->dismissViewController(false);
    EXPECT_EQ(happened(), QStringList({"a appear", "b disappear"}));
    EXPECT_EQ(b.use_count() + c.use_count(), 2) << "nobody else keeps them";
}

TEST_F(ContainersTest, TheNavigationStackShowsItsTop)
{
    const auto a = screen("a"), b = screen("b");
    const auto navigation = std::make_shared<NavigationController>(a);
    show(navigation);
    navigation->pushViewController(b, true);
    window.present(screen("modal"), false);
    window.dismissFrontViewController(false);
    EXPECT_EQ(happened(), QStringList({"b load", "b appear", "a disappear", "modal load", "modal appear",
                                       "b disappear", "b appear", "modal disappear"}));
    navigation->popViewController(true);
    navigation->popViewController(true); // the root stays
    EXPECT_EQ(navigation->topViewController(), a.get());
    EXPECT_EQ(happened(), QStringList({"a appear", "b disappear"}));
    EXPECT_EQ(b.use_count(), 1);
}

TEST_F(ContainersTest, ThePanelOpensOverTheCentreAndKeepsItsFirstMenu)
{
    const auto a = screen("a"), b = screen("b");
    const auto panel = std::make_shared<RevealSideViewController>(a);
    show(panel);
    panel->pushOldViewControllerOnDirection(left, true);
    EXPECT_FALSE(panel->isOpen()) << "there is nothing to show yet";

    const auto menu = screen<MenuScreen>("menu");
    panel->preloadViewController(menu, left);
    EXPECT_EQ(happened(), QStringList({"menu load"}));
    panel->pushOldViewControllerOnDirection(left, true);
    EXPECT_TRUE(panel->isOpen() && panel->isAnimated());
    EXPECT_EQ(happened(), QStringList({"menu appear"}));

    // A row of the menu makes a new centre, which preloads a menu of its own.
    panel->preloadViewController(screen<MenuScreen>("second menu"), left);
    EXPECT_EQ(panel->leftController(), menu.get());
    panel->popViewControllerWithNewCenterController(b, true);
    EXPECT_FALSE(panel->isOpen());
    EXPECT_EQ(panel->centerController(), b.get());
    EXPECT_EQ(happened(), QStringList({"b load", "b appear", "a disappear", "menu disappear"}));
    EXPECT_EQ(a.use_count(), 1);

    panel->preloadViewController(screen("other"), left);
    EXPECT_NE(panel->leftController(), menu.get()) << "a screen of another class takes the side";
    EXPECT_EQ(menu.use_count(), 1);
}

#include "ContainersTest.moc"
