#include "platform/modal/InputGate.h"
#include "platform/ui/containers/Answers.h"
#include "platform/ui/containers/Window.h"
#include "platform/ui/outlets/Button.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <gtest/gtest.h>

using namespace orvel;

TEST(AlertViewTest, StacksAndTellsItsDelegateOnce)
{
    Window window;
    window.makeKeyAndVisible();
    auto answers = std::make_shared<test::Answers>();
    const auto first = Window::showAlert("first", "message", {"Cancel", "Yes"}, answers, 7);
    const auto second = Window::showAlert("second", "message", {"OK"}, answers);
    EXPECT_EQ(window.alert(), second.get());
    second->click(0);
    second->click(0);
    EXPECT_EQ(window.alert(), first.get());
    first->click(1);
    EXPECT_EQ(window.alert(), nullptr);
    EXPECT_EQ(answers->seen, QList<int>({0, 71}));

    Window::showAlert("third", "message", {"OK"}, answers);
    answers.reset();
    window.alert()->click(0);
    EXPECT_EQ(window.alert(), nullptr) << "a delegate that is gone is not missed";
}

TEST(ActionSheetTest, StandsAmongAlertsInTheOrderTheyCame)
{
    Window window;
    window.makeKeyAndVisible();
    const auto answers = std::make_shared<test::Answers>();
    const auto sheet = Window::showActionSheet("Choose", {"SMS", "Mail"}, "Cancel", answers);
    EXPECT_TRUE(window.actionSheet() == sheet.get() && !window.alert());
    const auto alert = Window::showAlert("over", "message", {"OK"}, answers, 5);
    const auto second = Window::showActionSheet("Again", {"SMS"}, "Cancel", answers);
    EXPECT_TRUE(window.actionSheet() == second.get() && !window.alert());
    sheet->click(sheet->cancelButtonIndex()); // from beneath
    sheet->click(0);
    EXPECT_EQ(window.actionSheet(), second.get());
    second->click(0);
    EXPECT_TRUE(window.alert() == alert.get() && !window.actionSheet());
    alert->click(0);
    EXPECT_FALSE(window.alert() || window.actionSheet());
    EXPECT_EQ(answers->seen, QList<int>({2, 0, 50}));
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
