#include "platform/ui/MessageComposeViewController.h"
#include "platform/ui/RecordingServices.h"
#include "shell/Shell.h"

#include <QQuickItem>
#include <QTest>
#include <gtest/gtest.h>

using namespace orvel;

namespace {

struct Choices : ActionSheetDelegate
{
    void clickedButtonAtIndex(ActionSheet &, int buttonIndex) override { seen << buttonIndex; }
    QList<int> seen;
};

// Dismisses a composer as screens do: a message first, then the composer away from beneath it.
struct Sender : MessageComposeViewControllerDelegate
{
    void didFinishWithResult(MessageComposeViewController &controller, MessageComposeResult result) override
    {
        Window::showAlert(QStringLiteral("Fini"), QString::number(int(result)), {QStringLiteral("OK")});
        controller.dismissViewController(true);
    }
};

class SheetsTest : public ::testing::Test
{
protected:
    SheetsTest()
    {
        SystemServices::use(services);
        screens.setRootViewController(root);
        EXPECT_TRUE(shell.show());
        window().resize(375, 667);
        screens.makeKeyAndVisible();
        window().requestActivate();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
    }
    ~SheetsTest() override { SystemServices::use(nullptr); }

    QQuickWindow &window() { return shell.quickWindow(); }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(&window(), key, modifiers);
    }
    void type(const char *text)
    {
        for (const char *at = text; *at; ++at)
            QTest::keyClick(&window(), *at);
    }
    void ask()
    {
        Window::showActionSheet(QStringLiteral("Please Select Options"),
                                {QStringLiteral("SMS"), QStringLiteral("Telephone"), QStringLiteral("Mail")},
                                QStringLiteral("Cancel"), choices);
        QTest::qWait(400); // the slide
    }
    // The visible item with this text that takes clicks.
    static QQuickItem *button(QQuickItem *in, const QString &text)
    {
        if (in->isVisible() && in->property("text") == text && in->inherits("QQuickAbstractButton"))
            return in;
        for (QQuickItem *child : in->childItems()) {
            if (QQuickItem *found = button(child, text))
                return found;
        }
        return nullptr;
    }
    void click(const QString &text)
    {
        QQuickItem *target = button(window().contentItem(), text);
        ASSERT_TRUE(target) << text.toStdString();
        EXPECT_GE(target->height(), 44);
        QTest::mouseClick(&window(), Qt::LeftButton, {},
                          target->mapToScene(target->boundingRect().center()).toPoint());
    }

    std::shared_ptr<test::RecordingServices> services = std::make_shared<test::RecordingServices>();
    std::shared_ptr<Choices> choices = std::make_shared<Choices>();
    std::shared_ptr<Sender> sender = std::make_shared<Sender>();
    std::shared_ptr<MessageComposeViewController> root = std::make_shared<MessageComposeViewController>();
    Window screens;
    Shell shell{screens};
};

TEST_F(SheetsTest, AnActionSheetIsAnsweredByMouse)
{
    for (const char *text : {"SMS", "Mail", "Cancel"}) {
        ask();
        click(QString::fromLatin1(text));
        EXPECT_FALSE(screens.actionSheet());
    }
    ask();
    QTest::mouseClick(&window(), Qt::LeftButton, {}, {180, 100}); // beside it
    EXPECT_FALSE(screens.actionSheet());
    EXPECT_EQ(choices->seen, (QList<int>{0, 2, 3, 3}));
}

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
    Window::showAlert(QStringLiteral("Devant"), QString(), {QStringLiteral("OK")});
    key(Qt::Key_Escape);
    EXPECT_TRUE(screens.actionSheet() && !screens.alert());
    key(Qt::Key_Escape);
    EXPECT_EQ(choices->seen, (QList<int>{1, 3, 2, 3}));
    type("12");
    EXPECT_EQ(root->recipientsField.text(), QStringLiteral("12")) << "the screen has the keyboard again";
}

TEST_F(SheetsTest, AComposerIsFilledInAndSentByKeys)
{
    const auto composer = std::make_shared<MessageComposeViewController>();
    composer->setMessageComposeDelegate(sender);
    composer->setBody(QStringLiteral("TRV "));
    root->presentViewController(composer, true);
    type("70000");
    key(Qt::Key_Tab);
    key(Qt::Key_End);
    type("oui");
    key(Qt::Key_Return);
    type("non");
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    type("1");
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    key(Qt::Key_Return);
    ASSERT_EQ(services->messages.size(), 1);
    EXPECT_EQ(services->messages.first().recipients, QStringList{QStringLiteral("700001")});
    EXPECT_EQ(services->messages.first().body, QStringLiteral("TRV oui\nnon"));
    ASSERT_TRUE(screens.alert() && !screens.presentedViewController());
    key(Qt::Key_Return);
    EXPECT_FALSE(screens.alert()) << "the composer that went beneath it left it the keyboard";
}

TEST_F(SheetsTest, EscapeAndTheBarsButtonCancelAComposer)
{
    for (const bool escape : {true, false}) {
        const auto composer = std::make_shared<MessageComposeViewController>();
        composer->setMessageComposeDelegate(sender);
        composer->setRecipients({QStringLiteral("70000")});
        root->presentViewController(composer, true);
        if (escape)
            key(Qt::Key_Escape);
        else
            click(QStringLiteral("Annuler"));
        ASSERT_TRUE(screens.alert());
        EXPECT_EQ(screens.alert()->message(), QStringLiteral("0"));
        EXPECT_FALSE(screens.presentedViewController());
        click(QStringLiteral("OK"));
    }
    EXPECT_TRUE(services->messages.isEmpty());
}

} // namespace
