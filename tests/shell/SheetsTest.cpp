#include "platform/modal/InputGate.h"
#include "platform/system/RecordingServices.h"
#include "platform/ui/composers/MessageComposeViewController.h"
#include "platform/ui/containers/Answers.h"
#include "shell/ShellFixture.h"

#include <QQmlComponent>
#include <cmath>

using namespace orvel;

namespace {

// Dismisses a composer as screens do: a message first, then the composer away from beneath it.
struct Sender : MessageComposeViewControllerDelegate
{
    void didFinishWithResult(MessageComposeViewController &controller, MessageComposeResult result) override
    {
        Window::showAlert("Fini", QString::number(int(result)), {"OK"});
        controller.dismissViewController(true);
    }
};

struct SheetsTest : test::ShellFixture
{
    std::shared_ptr<test::RecordingServices> services = std::make_shared<test::RecordingServices>();
    std::shared_ptr<test::Answers> choices = std::make_shared<test::Answers>();
    std::shared_ptr<Sender> sender = std::make_shared<Sender>();
    std::shared_ptr<MessageComposeViewController> root = std::make_shared<MessageComposeViewController>();

    SheetsTest()
    {
        SystemServices::use(services);
        screens.setRootViewController(root);
        show();
    }
    ~SheetsTest() override { SystemServices::use(nullptr); }

    void type(const char *text)
    {
        for (const char *at = text; *at; ++at)
            QTest::keyClick(&window(), *at);
    }
    // As an input method does: `made` is still in the making.
    void compose(const QString &made, const QString &committed)
    {
        QInputMethodEvent event(made, {});
        event.setCommitString(committed);
        QCoreApplication::sendEvent(QGuiApplication::focusObject(), &event);
    }
    void ask()
    {
        Window::showActionSheet("Please Select Options", {"SMS", "Telephone", "Mail"}, "Cancel", choices);
        QTest::qWait(400); // the slide
    }
};

} // namespace

TEST_F(SheetsTest, AnActionSheetIsAnsweredByKeysAndKeepsThem)
{
    ask();
    key(Qt::Key_Down);
    key(Qt::Key_Return);
    ask();
    key(Qt::Key_Up); // round to the last
    key(Qt::Key_Space);
    ask();
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    key(Qt::Key_Enter);
    ask();
    Window::showAlert("Devant", QString(), {"OK"});
    key(Qt::Key_Escape);
    EXPECT_TRUE(screens.actionSheet() && !screens.alert());
    key(Qt::Key_Escape);
    ask();
    tap({180, 100}); // beside it
    EXPECT_FALSE(screens.actionSheet());
    EXPECT_EQ(choices->seen, (QList<int>{1, 3, 2, 3, 3}));
    type("12");
    EXPECT_EQ(root->recipientsField.text(), "12") << "the screen has the keyboard again";
}

TEST_F(SheetsTest, WhatAnInputMethodMakesReachesEveryFieldButNotThroughTheGate)
{
    compose("", "1");
    EXPECT_EQ(root->recipientsField.text(), "1");
    compose("2", "");
    EXPECT_EQ(root->recipientsField.text(), "1") << "not made yet";
    InputGate::shared().hold();
    EXPECT_EQ(root->recipientsField.text(), "12") << "kept when the gate closes";
    compose("", "3");
    InputGate::shared().release();
    EXPECT_EQ(root->recipientsField.text(), "12");
    compose("4", "");
    InputGate::shared().hold();
    EXPECT_EQ(root->recipientsField.text(), "124") << "kept when it closes before another key was pressed";
    InputGate::shared().release();
    key(Qt::Key_Tab);
    root->bodyView.setText(u"Été\u00a0!"_qs);
    EXPECT_EQ(root->bodyView.text(), u"Été\u00a0!"_qs) << "shown, not edited";
    itemWith(u"Été"_qs, "QQuickTextEdit");
    compose("", u"ô"_qs);
    key(Qt::Key_Return);
    compose("x", "");
    tap(centreOf("Envoyer")); // which leaves the keyboard with the field
    ASSERT_EQ(services->messages.size(), 1);
    EXPECT_TRUE(services->messages.first().body.contains(u"ô\nx"_qs));
}

TEST_F(SheetsTest, TheKeyboardComesBackToWhereItWasAndShowsIt)
{
    key(Qt::Key_Tab);
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    type("1");
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    const QQuickItem *const button = itemWith("Envoyer");
    const auto isBack = [&] {
        return window().activeFocusItem() == button && button->property("visualFocus").toBool();
    };
    ASSERT_TRUE(isBack());
    Window::showAlert("Un", QString(), {"OK"});
    EXPECT_FALSE(isBack());
    key(Qt::Key_Return);
    EXPECT_TRUE(isBack()) << "after an alert";
    tap({180, 10});
    Window::showAlert("Un", QString(), {"OK"});
    EXPECT_FALSE(itemWith("OK")->property("visualFocus").toBool()) << "for a finger";
    key(Qt::Key_Return);
    for (const bool animated : {false, true}) {
        const auto composer = std::make_shared<MessageComposeViewController>();
        composer->setMessageComposeDelegate(sender);
        root->presentViewController(composer, animated);
        EXPECT_FALSE(isBack());
        key(Qt::Key_Escape);
        EXPECT_TRUE(screens.alert() && !screens.presentedViewController());
        key(Qt::Key_Return);
        EXPECT_FALSE(screens.alert()) << "the composer that went beneath it left it the keyboard";
        EXPECT_TRUE(isBack()) << "after a screen above it";
    }
}

TEST_F(SheetsTest, ALongMessageScrollsInItsAlert)
{
    Window::showAlert("Un", QString("mot ").repeated(500), {"OK"});
    QTest::qWait(300); // the panel grows to its size
    const QPoint ok = centreOf("OK");
    EXPECT_TRUE(ok.y() > 500 && ok.y() < window().height()) << ok.y();
    const QQuickItem *const message = itemWith("mot", "QQuickText");
    const double before = message->mapToScene({0, 0}).y();
    key(Qt::Key_Down);
    EXPECT_LT(message->mapToScene({0, 0}).y(), before);
    for (int i = 0; i < 50; ++i)
        key(Qt::Key_Down);
    const double end = message->mapToScene({0, message->height()}).y();
    EXPECT_TRUE(end > 400 && end < ok.y()) << end;
    key(Qt::Key_Return);
    EXPECT_FALSE(screens.alert());
}

TEST_F(SheetsTest, TheFocusRingIsSeenOnEveryGround)
{
    const auto luminance = [](QColor colour) { return std::pow(qGray(colour.rgb()) / 255.0, 2.2); };
    QQmlComponent component(qmlEngine(itemWith("Envoyer")));
    component.setData("import QtQml\nimport Orvel.Kit\nQtObject { readonly property QtObject theme: Theme }",
                      {});
    const std::unique_ptr<QObject> holder(component.create());
    auto *const theme = holder->property("theme").value<QObject *>();
    const double ring = luminance(theme->property("ring").value<QColor>()) + 0.05;
    for (const char *name :
         {"ink", "inkRaised", "night", "field", "page", "row", "rowPressed", "placeholder"}) {
        const double ground = luminance(theme->property(name).value<QColor>()) + 0.05;
        EXPECT_GE(std::max(ring, ground) / std::min(ring, ground), 3) << name;
    }
}
