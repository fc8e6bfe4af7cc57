#include "platform/modal/InputGate.h"
#include "platform/ui/containers/ProgressHud.h"
#include "platform/ui/containers/Window.h"
#include "platform/ui/outlets/Button.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <gtest/gtest.h>

using namespace orvel;

namespace {

struct Answers : AlertViewDelegate, ActionSheetDelegate
{
    void clickedButtonAtIndex(ActionSheet &sheet, int button) override
    {
        seen << QStringLiteral("sheet %1 of %2").arg(button).arg(sheet.cancelButtonIndex());
    }
    void clickedButtonAtIndex(AlertView &alert, int button) override
    {
        seen << QStringLiteral("%1 %2 %3").arg(alert.title()).arg(alert.tag()).arg(button);
    }
    QStringList seen;
};

} // namespace

TEST(AlertViewTest, StacksAndTellsItsDelegateOnce)
{
    Window window;
    window.makeKeyAndVisible();
    auto answers = std::make_shared<Answers>();
    const auto first = Window::showAlert("first", "message", {"Cancel", "Yes"}, answers, 7);
    const auto second = Window::showAlert("second", "message", {"OK"}, answers);
    EXPECT_EQ(window.alert(), second.get());
    second->click(0);
    second->click(0);
    EXPECT_EQ(window.alert(), first.get());
    first->click(1);
    EXPECT_EQ(window.alert(), nullptr);
    EXPECT_EQ(answers->seen, QStringList({"second 0 0", "first 7 1"}));

    Window::showAlert("third", "message", {"OK"}, answers);
    answers.reset();
    window.alert()->click(0);
    EXPECT_EQ(window.alert(), nullptr) << "a delegate that is gone is not missed";
}

TEST(ActionSheetTest, StandsAmongAlertsInTheOrderTheyCame)
{
    Window window;
    window.makeKeyAndVisible();
    const auto answers = std::make_shared<Answers>();
    const auto sheet = Window::showActionSheet("Choose", {"SMS", "Mail"}, "Cancel", answers);
    EXPECT_TRUE(window.actionSheet() == sheet.get() && !window.alert());
    const auto alert = Window::showAlert("over", "message", {"OK"}, answers);
    const auto second = Window::showActionSheet("Again", {"SMS"}, "Cancel", answers);
    EXPECT_TRUE(window.actionSheet() == second.get() && !window.alert());
    sheet->click(sheet->cancelButtonIndex()); // from beneath
    sheet->click(0);
    EXPECT_EQ(window.actionSheet(), second.get());
    second->click(0);
    EXPECT_TRUE(window.alert() == alert.get() && !window.actionSheet());
    alert->click(0);
    EXPECT_FALSE(window.alert() || window.actionSheet());
    EXPECT_EQ(answers->seen, QStringList({"sheet 2 of 2", "sheet 0 of 1", "over 0 0"}));
}

TEST(InputGateTest, SwallowsEveryKindOfInputWhileItIsHeld)
{
    struct Receiver : QObject
    {
        bool event(QEvent *event) override { return seen << event->type(), true; }
        QList<QEvent::Type> seen;
    } receiver;
    using Events = QList<QEvent::Type>;
    const auto received = [&](const Events &types, bool repeat = false) {
        receiver.seen.clear();
        for (const QEvent::Type type : types) {
            QKeyEvent event(type, Qt::Key_A, Qt::NoModifier, QString(), repeat);
            QCoreApplication::sendEvent(&receiver, &event);
        }
        return receiver.seen;
    };
    const Events input{QEvent::MouseButtonPress, QEvent::MouseButtonDblClick, QEvent::KeyPress,
                       QEvent::KeyRelease,       QEvent::ShortcutOverride,    QEvent::Wheel,
                       QEvent::TouchBegin,       QEvent::TabletPress,         QEvent::InputMethod};
    InputGate &gate = InputGate::shared();
    int closings = 0;
    QObject::connect(&gate, &InputGate::closed, &receiver, [&] {
        ++closings;
        EXPECT_EQ(received({QEvent::InputMethod}), Events{QEvent::InputMethod}) << "the last to pass";
    });
    EXPECT_EQ(received(input), input);
    gate.hold();
    gate.hold();
    EXPECT_TRUE(received(input).isEmpty());
    EXPECT_EQ(received({QEvent::MouseButtonRelease}), Events{QEvent::MouseButtonRelease});
    gate.release();
    EXPECT_TRUE(received(input).isEmpty());
    EXPECT_EQ(closings, 1);
    gate.release();
    EXPECT_TRUE(received({QEvent::KeyPress}, true).isEmpty()) << "held down all the while";
    EXPECT_EQ(received(input), input);
    EXPECT_EQ(received({QEvent::KeyPress}, true), Events{QEvent::KeyPress});
}

TEST(ProgressHudTest, HoldsTheInputGateWhileItIsShown)
{
    ProgressHud &hud = ProgressHud::shared();
    hud.showWithStatus("Please Wait...");
    hud.showWithStatus("Still waiting", ProgressHud::MaskType::Black);
    EXPECT_TRUE(hud.isVisible() && hud.isDimmed() && InputGate::shared().isHeld());
    EXPECT_EQ(hud.status(), "Still waiting");
    hud.dismiss();
    EXPECT_FALSE(hud.isVisible() || InputGate::shared().isHeld());
    hud.dismiss();
    hud.showWithStatus("Again");
    EXPECT_TRUE(InputGate::shared().isHeld());
    hud.dismiss();
}

TEST(ButtonTest, ActsOnlyWhileEnabledAndShownAndMayEndItsOwner)
{
    auto button = std::make_unique<Button>();
    int touches = 0;
    button->touchUpInside();
    button->setTarget([&](Button &sender) {
        EXPECT_EQ(&sender, button.get());
        if (++touches == 2)
            button.reset();
    });
    button->setHidden(true);
    button->touchUpInside();
    button->setHidden(false);
    button->setEnabled(false);
    button->touchUpInside();
    EXPECT_EQ(touches, 0);
    button->setEnabled(true);
    button->touchUpInside();
    button->touchUpInside();
    EXPECT_EQ(touches, 2);
    EXPECT_FALSE(button);
}
