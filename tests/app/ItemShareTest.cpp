#include "app/ItemShare.h"
#include "app/AppFixture.h"
#include "app/GLOB.h"
#include "platform/ui/ComposeViewController.h"
#include "platform/ui/MailComposeViewController.h"
#include "platform/ui/ProgressHud.h"
#include "support/ScriptedServer.h"

#include <QBuffer>

using namespace orvel;
using namespace orvel::test;

namespace {

const QImage picture(40, 30, QImage::Format_RGB32);

QByteArray pngOf(const QImage &image)
{
    QBuffer file;
    image.save(&file, "PNG");
    return file.data();
}

Script answer(const QByteArray &body, const QByteArray &statusLine = "HTTP/1.1 200 OK")
{
    return {Send{httpHead("Content-Length: " + QByteArray::number(body.size()) + "\r\n", statusLine) + body}};
}

struct ItemShareTest : AppFixture
{
    JsonValue item(const QString &mediaUrl = "http://127.0.0.1:1/media")
    {
        JsonValue value = JsonValue::emptyObject();
        value.set("title", "L'été <b>en direct</b>");
        value.set("media_url", mediaUrl);
        value.set("picture", "ete.jpg");
        return value;
    }
    // As screens do it: under the overlay, a moment later.
    void run(void (ItemShare::*operation)(ViewController &) const, const ItemShare &share)
    {
        GLOB::glob_ShowHud();
        letEventsRun();
        EXPECT_TRUE(ProgressHud::shared().isVisible());
        RunLoop::main().after(0.1, [this, operation, share] { (share.*operation)(radios()); });
        clock.turn(0.2);
        letEventsRun();
        EXPECT_FALSE(ProgressHud::shared().isVisible());
    }
    template<class Composer>
    Composer &presented()
    {
        return dynamic_cast<Composer &>(*app->window()->presentedViewController());
    }
    void expectAlert(const QString &title, const QString &message)
    {
        ASSERT_NE(alert(), nullptr);
        EXPECT_EQ(alert()->title(), title);
        EXPECT_EQ(alert()->message(), message);
        EXPECT_EQ(alert()->buttons(), QStringList{"Ok"});
        alert()->click(0);
    }
};

} // namespace

TEST_F(ItemShareTest, FacebookGetsTitleAndPictureUrlAndOnlyAPostIsTold)
{
    ItemShare(item()).functionFacebook(radios());
    auto *sheet = &presented<ComposeViewController>();
    EXPECT_EQ(sheet->serviceType(), ServiceType::Facebook);
    EXPECT_EQ(sheet->textView.text(), QString::fromUtf8("L'été <b>en direct</b>"));
    EXPECT_EQ(sheet->urlLabel.text(), "http://127.0.0.1:1/media/ete.jpg");
    EXPECT_TRUE(sheet->imageView.image().isNull());
    sheet->cancelButton.touchUpInside();
    EXPECT_EQ(alert(), nullptr);
    EXPECT_EQ(app->window()->presentedViewController(), nullptr);

    ItemShare(JsonValue::emptyObject()).functionFacebook(radios());
    sheet = &presented<ComposeViewController>();
    EXPECT_EQ(sheet->textView.text(), "(null)");
    EXPECT_EQ(sheet->urlLabel.text(), "(null)/(null)");
    sheet->sendButton.touchUpInside();
    expectAlert("Facebook Message", "Facebook Post Successfull");
}

TEST_F(ItemShareTest, TwitterTakesTheShownPictureOrFetchesIt)
{
    const ScriptedServer server({answer(pngOf(picture)),
                                 answer(pngOf(picture), "HTTP/1.1 404 No"),
                                 answer("not a picture"),
                                 {Reset{}}});
    const struct
    {
        QImage shown;
        QSize attached;
        std::size_t requests;
    } cases[] = {{picture.scaled(5, 4), {5, 4}, 0},
                 {{}, {40, 30}, 1},
                 {{}, {0, 0}, 2},
                 {{}, {0, 0}, 3},
                 {{}, {0, 0}, 4}};
    for (const auto &test : cases) {
        run(&ItemShare::callTwiter, ItemShare(item(server.url("/media")), test.shown));
        auto &sheet = presented<ComposeViewController>();
        EXPECT_EQ(sheet.serviceType(), ServiceType::Twitter);
        EXPECT_EQ(sheet.imageView.image().size(), test.attached) << test.requests;
        EXPECT_EQ(sheet.urlLabel.text(), "");
        EXPECT_EQ(server.requestCount(), test.requests);
        sheet.sendButton.touchUpInside();
        expectAlert("Twitter Message", "Twitter Post Successfull");
    }
    EXPECT_TRUE(server.requests()[0].startsWith("GET /media/ete.jpg "));
}

TEST_F(ItemShareTest, AMailCarriesTitleAndPicture)
{
    const ScriptedServer server({answer("any bytes"), {Reset{}}});
    const std::pair<QImage, QByteArray> cases[] = {{picture, "\xff\xd8\xff"}, {{}, "any bytes"}, {{}, ""}};
    for (const auto &[shown, beginning] : cases) {
        run(&ItemShare::emailCall, ItemShare(item(server.url("/media")), shown));
        const MailDraft draft = presented<MailComposeViewController>().draft();
        EXPECT_EQ(draft.subject, "ORVEL Application");
        EXPECT_EQ(draft.body, QString::fromUtf8("L'été <b>en direct</b>"));
        EXPECT_EQ(presented<MailComposeViewController>().recipientsField.text(), "");
        EXPECT_EQ(draft.attachmentType, "image/jpeg");
        EXPECT_EQ(draft.attachmentName, "photo.jpeg");
        EXPECT_TRUE(draft.attachment.startsWith(beginning));
        EXPECT_EQ(draft.attachment.isEmpty(), beginning.isEmpty());
        radios().dismissViewController(false);
    }
    system->refused << "mailto";
    run(&ItemShare::emailCall, ItemShare(item(server.url("/media"))));
    EXPECT_EQ(server.requestCount(), 2u);
    ASSERT_NE(alert(), nullptr);
    EXPECT_EQ(alert()->title(), "Failure");
    EXPECT_EQ(app->window()->presentedViewController(), nullptr);
}
