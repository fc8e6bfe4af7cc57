#include "layouts/kit/Motion.h"
#include "layouts/kit/ScreenView.h"
#include "platform/modal/InputGate.h"
#include "platform/ui/composers/MessageComposeViewController.h"
#include "platform/ui/containers/Answers.h"
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
    // What screen readers do, without one: Qt calls it by this name.
    void readerPresses(const QString &text)
    {
        QMetaObject::invokeMethod(itemWith(text), "accessiblePressAction");
    }
    QPointF place(const ViewController &controller)
    {
        const ScreenView *shown = view(controller);
        return shown && shown->isVisible() ? shown->position() : QPointF(-1, -1);
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
    key(Qt::Key_Tab); // the centre's button
    const QQuickItem *const button = window().activeFocusItem();
    side->pushOldViewControllerOnDirection(RevealSideViewController::Side::Left, false);
    EXPECT_NE(window().activeFocusItem(), button);
    key(Qt::Key_Escape);
    EXPECT_FALSE(side->isOpen());
    EXPECT_EQ(window().activeFocusItem(), button) << "has the keyboard again";
    side->open(false);
    pan(350, 100);
    EXPECT_FALSE(side->isOpen());
    EXPECT_EQ(centreX(), 0);
    QTest::mousePress(&window(), Qt::LeftButton, {}, {20, 400});
    for (int x = 20; x < 120; x += 10)
        QTest::mouseMove(&window(), {x, 400}, 20);
    InputGate::shared().hold();
    for (int x = 120; x < 360; x += 20)
        QTest::mouseMove(&window(), {x, 400}, 10);
    QTest::mouseRelease(&window(), Qt::LeftButton, {}, {360, 400});
    InputGate::shared().release();
    QTest::qWait(300);
    EXPECT_TRUE(!side->isOpen() && centreX() == 0) << "let go of when the gate closed";
    side->setPanInteractionsWhenClosed(RevealSideViewController::PanNone);
    pan(60, 260);
    EXPECT_FALSE(side->isOpen());
    side->open(true);
    QTest::qWait(50);
    EXPECT_TRUE(centreX() > 0 && centreX() < 319) << "on its way";
    side->close(false);
    EXPECT_EQ(centreX(), 0) << "at once";
}

TEST_F(ContainersTest, ScreensMoveOnlyWhenToldSoAndAllowedTo)
{
    const auto composer = std::make_shared<MessageComposeViewController>();
    const auto next = stack();
    // Whether `screen` is on its way now, before `behind`. It arrives soon.
    const auto slides = [&](const ViewController &screen, const ViewController &behind) {
        QTest::qWait(60);
        const QPointF at = place(screen);
        const bool moves = at.x() > 0 || at.y() > 0;
        EXPECT_EQ(place(behind), QPointF(0, 0));
        QTest::qWait(240);
        return moves;
    };
    const QPointF hidden(-1, -1);
    auto *const pages = dynamic_cast<NavigationController *>(side->centerController());
    pages->pushViewController(next, true);
    QTest::qWait(60);
    EXPECT_TRUE(place(*next).x() > 0 && place(*next).y() == 0) << "from the right";
    pages->popViewController(false);
    side->presentViewController(composer, true);
    EXPECT_TRUE(slides(*composer, *side));
    EXPECT_EQ(place(*composer), QPointF(0, 0));
    EXPECT_EQ(place(*side), hidden);
    side->presentViewController(next, false);
    EXPECT_EQ(place(*next), QPointF(0, 0));
    EXPECT_EQ(place(*composer), hidden);
    side->dismissViewController(true);
    EXPECT_TRUE(slides(*next, *composer));
    EXPECT_EQ(next.use_count(), 1) << "its layout is gone";

    const QQuickItem *anything = window().contentItem()->childItems().constFirst();
    qmlEngine(anything)
        ->singletonInstance<Motion *>(qmlTypeId("Orvel.Kit", 1, 0, "Motion"))
        ->setReduced(true);
    side->dismissViewController(true);
    EXPECT_FALSE(view(*composer) && view(*composer)->isVisible());
    EXPECT_EQ(place(*side), QPointF(0, 0));
}

TEST_F(ContainersTest, AScreenReadersPressIsATapThatTheGateAndAnAlertHoldBack)
{
    side->open(false);
    InputGate::shared().hold();
    readerPresses("Fermer le menu");
    EXPECT_TRUE(side->isOpen());
    InputGate::shared().release();
    const auto alert = Window::showAlert("Un", QString(), {"Non"});
    readerPresses("Fermer le menu");
    EXPECT_TRUE(side->isOpen());
    readerPresses("Non");
    readerPresses("Fermer le menu");
    EXPECT_FALSE(side->isOpen() || screens.alert());
}

TEST_F(ContainersTest, AnAlertTakesTapsAndKeysFromWhatLiesBeneath)
{
    side->open(false);
    const auto answers = std::make_shared<test::Answers>();
    Window::showAlert("Un", QString(), {"Non", "Oui"}, answers);
    Window::showAlert("Deux", QString(), {"Non", "Oui"}, answers);
    tap({350, 600});
    EXPECT_EQ(screens.alert()->title(), "Deux");
    key(Qt::Key_Escape);
    EXPECT_EQ(screens.alert()->title(), "Un");
    QKeyEvent repeat(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), true);
    QCoreApplication::sendEvent(&window(), &repeat);
    EXPECT_TRUE(screens.alert()) << "held down since the last question";
    key(Qt::Key_Return);
    EXPECT_EQ(screens.alert(), nullptr);
    EXPECT_EQ(answers->seen, (QList<int>{0, 1}));
    EXPECT_TRUE(side->isOpen());
    key(Qt::Key_Escape);
    EXPECT_FALSE(side->isOpen());
}
