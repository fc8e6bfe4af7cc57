#include "platform/system/RecordingServices.h"
#include "platform/ui/composers/MessageComposeViewController.h"
#include "shell/ShellFixture.h"

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
        Window::showAlert("Fini", QString::number(int(result)), {"OK"});
        controller.dismissViewController(true);
    }
};

struct SheetsTest : test::ShellFixture
{
    std::shared_ptr<test::RecordingServices> services = std::make_shared<test::RecordingServices>();
    std::shared_ptr<Choices> choices = std::make_shared<Choices>();
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

TEST_F(SheetsTest, AComposerIsFilledInAndSentByKeys)
{
    const auto composer = std::make_shared<MessageComposeViewController>();
    composer->setMessageComposeDelegate(sender);
    composer->setBody("TRV ");
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
    EXPECT_EQ(services->messages.first().recipients, QStringList{"700001"});
    EXPECT_EQ(services->messages.first().body, "TRV oui\nnon");
    ASSERT_TRUE(screens.alert() && !screens.presentedViewController());
    key(Qt::Key_Return);
    EXPECT_FALSE(screens.alert()) << "the composer that went beneath it left it the keyboard";
}
