#include "app/ItemShare.h"
#include "app/AppFixture.h"
#include "app/GLOB.h"
#include "app/ShareData.h"
#include "platform/ui/composers/ComposeViewController.h"
#include "platform/ui/composers/MailComposeViewController.h"
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
        EXPECT_TRUE(waitUntil([] { return !ProgressHud::shared().isVisible(); }));
    }
};

} // namespace

TEST_F(ItemShareTest, FacebookGetsTitleAndPictureUrlAndOnlyAPostIsTold)
{
    ItemShare(item()).functionFacebook(radios());
    auto *sheet = &presentedAs<ComposeViewController>();
    EXPECT_EQ(sheet->serviceType(), ServiceType::Facebook);
    EXPECT_EQ(sheet->textView.text(), QString::fromUtf8("L'été <b>en direct</b>"));
    EXPECT_EQ(sheet->urlLabel.text(), "http://127.0.0.1:1/media/ete.jpg");
    EXPECT_TRUE(sheet->imageView.image().isNull());
    sheet->cancelButton.touchUpInside();
    EXPECT_EQ(presented() + alertTold(), "");

    ShareData().functionFacebook({}, {}, radios());
    sheet = &presentedAs<ComposeViewController>();
    EXPECT_EQ(sheet->textView.text(), "(null)");
    EXPECT_EQ(sheet->urlLabel.text(), "(null)");
    sheet->sendButton.touchUpInside();
    ASSERT_TRUE(alert());
    EXPECT_EQ(alert()->buttons(), QStringList{"Ok"});
    EXPECT_EQ(alertTold(), "Facebook Message: Facebook Post Successfull");
}

TEST_F(ItemShareTest, TwitterTakesTheShownPictureOrFetchesIt)
{
    const ScriptedServer server({answer(pngOf(picture)),
                                 answer(pngOf(picture), "HTTP/1.1 404 No"),
                                 answer("not a picture"),
                                 {Reset{}}});
    const std::pair<QImage, QSize> cases[] = {
        {picture.scaled(5, 4), {5, 4}}, {{}, {40, 30}}, {{}, {0, 0}}, {{}, {0, 0}}, {{}, {0, 0}}};
    std::size_t requests = 0; // none for the one that is shown
    for (const auto &[shown, attached] : cases) {
        run(&ItemShare::callTwiter, ItemShare(item(server.url("/media")), shown));
        auto &sheet = presentedAs<ComposeViewController>();
        EXPECT_EQ(sheet.serviceType(), ServiceType::Twitter);
        EXPECT_EQ(sheet.imageView.image().size(), attached) << requests;
        EXPECT_EQ(sheet.urlLabel.text(), "");
        EXPECT_EQ(server.requestCount(), requests++);
        sheet.sendButton.touchUpInside();
        EXPECT_EQ(alertTold(), "Twitter Message: Twitter Post Successfull");
    }
    EXPECT_TRUE(server.requests()[0].startsWith("GET /media/ete.jpg "));
}

TEST_F(ItemShareTest, AMailCarriesTitleAndPicture)
{
    const ScriptedServer server({answer("any bytes"), {Reset{}}});
    const std::pair<QImage, QByteArray> cases[] = {{picture, "\xff\xd8\xff"}, {{}, "any bytes"}, {{}, ""}};
    for (const auto &[shown, beginning] : cases) {
        run(&ItemShare::emailCall, ItemShare(item(server.url("/media")), shown));
        const MailDraft draft = presentedAs<MailComposeViewController>().draft();
        EXPECT_EQ(draft.subject, "ORVEL Application");
        EXPECT_EQ(draft.body, QString::fromUtf8("L'été <b>en direct</b>"));
        EXPECT_EQ(presentedAs<MailComposeViewController>().recipientsField.text(), "");
        EXPECT_EQ(draft.attachmentType, "image/jpeg");
        EXPECT_EQ(draft.attachmentName, "photo.jpeg");
        EXPECT_TRUE(draft.attachment.startsWith(beginning));
        EXPECT_EQ(draft.attachment.isEmpty(), beginning.isEmpty());
        radios().dismissViewController(false);
    }
    run(&ItemShare::emailCall, ItemShare(JsonValue::emptyObject(), picture));
    const MailDraft untitled = presentedAs<MailComposeViewController>().draft();
    EXPECT_EQ(untitled.body, "(null)");
    const QByteArray bestQuality =
        QByteArray("\xff\xdb\0\x43\0", 5) + QByteArray(64, 1); // nothing is rounded
    EXPECT_TRUE(untitled.attachment.contains(bestQuality));
    radios().dismissViewController(false);

    QImage transparent(8, 8, QImage::Format_ARGB32_Premultiplied);
    transparent.fill(Qt::transparent);
    run(&ItemShare::emailCall, ItemShare(item(), transparent));
    const QByteArray jpeg = presentedAs<MailComposeViewController>().draft().attachment;
    EXPECT_EQ(QImage::fromData(jpeg).pixelColor(4, 4), QColor(Qt::white));
    radios().dismissViewController(false);
    run(&ItemShare::callTwiter, ItemShare(item(), transparent));
    EXPECT_EQ(presentedAs<ComposeViewController>().imageView.image().pixelColor(4, 4), QColor(Qt::white));
    radios().dismissViewController(false);

    system->refused << "mailto";
    run(&ItemShare::emailCall, ItemShare(item(server.url("/media"))));
    EXPECT_EQ(server.requestCount(), 2u);
    EXPECT_TRUE(alertTold().startsWith("Failure: "));
    EXPECT_EQ(presented(), "");
}
