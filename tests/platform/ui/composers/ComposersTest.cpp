#include "platform/system/RecordingServices.h"
#include "platform/ui/composers/ComposeViewController.h"
#include "platform/ui/composers/MailComposeViewController.h"
#include "platform/ui/composers/MessageComposeViewController.h"
#include "platform/ui/containers/Window.h"

#include <gtest/gtest.h>

using namespace orvel;

namespace {

struct Results : MessageComposeViewControllerDelegate, MailComposeViewControllerDelegate
{
    void didFinishWithResult(MessageComposeViewController &, MessageComposeResult result) override
    {
        seen << QStringLiteral("message %1").arg(int(result));
    }
    void didFinishWithResult(MailComposeViewController &, MailComposeResult result,
                             const QString &error) override
    {
        seen << QStringLiteral("mail %1 %2").arg(int(result)).arg(error).trimmed();
    }
    QStringList seen;
};

struct ComposersTest : testing::Test
{
    ComposersTest()
    {
        SystemServices::use(services);
        window.setRootViewController(root);
        window.makeKeyAndVisible();
    }
    ~ComposersTest() override { SystemServices::use(nullptr); }

    template<class Composer>
    std::shared_ptr<Composer> presented(std::shared_ptr<Composer> composer)
    {
        root->presentViewController(composer, true);
        return composer;
    }
    std::shared_ptr<MessageComposeViewController> message(const QString &recipients)
    {
        auto composer = std::make_shared<MessageComposeViewController>();
        composer->setMessageComposeDelegate(results);
        composer->recipientsField.setText(recipients);
        return presented(composer);
    }
    std::shared_ptr<MailComposeViewController> mail()
    {
        auto composer = std::make_shared<MailComposeViewController>();
        composer->setMailComposeDelegate(results);
        composer->setMessageBody("Le <b>titre</b> &amp; la suite");
        composer->setToRecipients({""});
        composer->addAttachmentData("not a picture", "image/jpeg", "photo.jpeg");
        return presented(composer);
    }

    Window window;
    std::shared_ptr<ViewController> root = std::make_shared<ViewController>();
    std::shared_ptr<test::RecordingServices> services = std::make_shared<test::RecordingServices>();
    std::shared_ptr<Results> results = std::make_shared<Results>();
};

} // namespace

TEST_F(ComposersTest, AMessageGoesOutOnceAsTheUserLeftIt)
{
    EXPECT_FALSE(message(" , ")->sendButton.enabled());
    const auto composer = message(" 70000 ;, +33 1 ,");
    composer->bodyView.setText("Bonjour");
    composer->sendButton.touchUpInside();
    composer->sendButton.touchUpInside();
    composer->cancelButton.touchUpInside();
    ASSERT_EQ(services->messages.size(), 1);
    EXPECT_EQ(services->messages.first().recipients, (QStringList{"70000", "+33 1"}));
    EXPECT_EQ(services->messages.first().body, "Bonjour");
    EXPECT_EQ(results->seen, QStringList("message 1"));
    EXPECT_EQ(window.presentedViewController(), composer.get()) << "its delegate dismisses it";
}

TEST_F(ComposersTest, AComposerWhoseDelegateIsGoneDismissesItself)
{
    const auto first = message("70000");
    const auto second = mail();
    results.reset();
    second->cancelButton.touchUpInside();
    EXPECT_EQ(window.presentedViewController(), first.get());
    first->cancelButton.touchUpInside();
    EXPECT_FALSE(window.presentedViewController());
}

TEST_F(ComposersTest, AMailKeepsItsHtmlUntilItsTextIsEdited)
{
    const auto composer = mail();
    EXPECT_EQ(composer->bodyView.text(), "Le titre & la suite");
    EXPECT_FALSE(composer->sendButton.enabled());
    EXPECT_FALSE(composer->attachmentName.hidden());
    composer->recipientsField.setText("a@b.example");
    const MailDraft draft = composer->draft();
    EXPECT_EQ(draft.recipients, QStringList{"a@b.example"});
    EXPECT_EQ(draft.body, "Le <b>titre</b> &amp; la suite");
    EXPECT_EQ(draft.attachment, "not a picture");
    composer->bodyView.setText("1 < 2");
    EXPECT_TRUE(composer->draft().body.contains("1 &lt; 2"));
    composer->addAttachmentData({}, "image/jpeg", "photo.jpeg");
    EXPECT_TRUE(composer->attachmentName.hidden());
}

TEST_F(ComposersTest, AShareSheetDismissesItselfAndThenTells)
{
    const auto share = [this](ServiceType service, const QString &url) {
        auto composer = std::make_shared<ComposeViewController>(service);
        composer->setInitialText(u"L'été & toi"_qs);
        composer->addURL(url);
        composer->setCompletionHandler([this](ComposeResult result) {
            EXPECT_FALSE(window.presentedViewController());
            results->seen << QString::number(int(result));
        });
        return presented(composer);
    };
    auto composer = share(ServiceType::Facebook, "http://a.example/p?x=1");
    composer->sendButton.touchUpInside();
    composer->cancelButton.touchUpInside();
    composer = share(ServiceType::Twitter, "");
    composer->addImage(QImage(4, 4, QImage::Format_RGB32));
    EXPECT_FALSE(composer->imageName.hidden());
    composer->textView.setText("Oh !");
    composer->sendButton.touchUpInside();
    EXPECT_EQ(services->opened,
              (QStringList{"https://www.facebook.com/sharer/sharer.php?quote=L%27%C3%A9t%C3%A9%20%26%20toi"
                           "&u=http%3A%2F%2Fa.example%2Fp%3Fx%3D1",
                           "https://twitter.com/intent/tweet?text=Oh%20%21"}));

    services->refused << "https";
    composer = share(ServiceType::Twitter, "");
    composer->sendButton.touchUpInside();
    EXPECT_TRUE(window.alert() && window.presentedViewController()) << "nobody took it: it stays open";
    composer->cancelButton.touchUpInside();
    EXPECT_EQ(results->seen, (QStringList{"1", "1", "0"}));
}
