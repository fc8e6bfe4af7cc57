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

QImage redPicture()
{
    QImage picture(40, 30, QImage::Format_RGB32);
    picture.fill(Qt::red);
    return picture;
}

QByteArray pngOf(const QImage &picture)
{
    QBuffer file;
    picture.save(&file, "PNG");
    return file.data();
}

Script answer(const QByteArray &body, const QByteArray &statusLine = "HTTP/1.1 200 OK")
{
    return {Send{httpHead("Content-Length: " + QByteArray::number(body.size()) + "\r\n", statusLine) + body},
            Close{}};
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
    Composer *presented()
    {
        return dynamic_cast<Composer *>(app->window()->presentedViewController());
    }
};

} // namespace

TEST_F(ItemShareTest, FacebookGetsTitleAndPictureUrlAndOnlyAPostIsTold)
{
    ItemShare(item()).functionFacebook(radios());
    auto *sheet = presented<ComposeViewController>();
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(sheet->serviceType(), ServiceType::Facebook);
    EXPECT_EQ(sheet->textView.text(), QString::fromUtf8("L'été <b>en direct</b>"));
    EXPECT_EQ(sheet->urlLabel.text(), "http://127.0.0.1:1/media/ete.jpg");
    EXPECT_TRUE(sheet->imageView.image().isNull());
    sheet->cancelButton.touchUpInside();
    EXPECT_EQ(alert(), nullptr);
    EXPECT_EQ(app->window()->presentedViewController(), nullptr);

    ItemShare(JsonValue::emptyObject()).functionFacebook(radios());
    sheet = presented<ComposeViewController>();
    EXPECT_EQ(sheet->textView.text(), "(null)");
    EXPECT_EQ(sheet->urlLabel.text(), "(null)/(null)");
    sheet->sendButton.touchUpInside();
    ASSERT_NE(alert(), nullptr);
    EXPECT_EQ(alert()->title(), "Facebook Message");
    EXPECT_EQ(alert()->message(), "Facebook Post Successfull");
    EXPECT_EQ(alert()->buttons(), QStringList{"Ok"});
}

TEST_F(ItemShareTest, TwitterTakesTheShownPictureOrFetchesIt)
{
    const ScriptedServer server({answer(pngOf(redPicture())),
                                 answer(pngOf(redPicture()), "HTTP/1.1 404 No"),
                                 answer("not a picture"),
                                 {Reset{}}});
    const struct
    {
        QImage shown;
        QSize attached;
        std::size_t requests;
    } cases[] = {{QImage(5, 4, QImage::Format_RGB32), {5, 4}, 0},
                 {{}, {40, 30}, 1},
                 {{}, {0, 0}, 2},
                 {{}, {0, 0}, 3},
                 {{}, {0, 0}, 4}};
    for (const auto &test : cases) {
        run(&ItemShare::callTwiter, ItemShare(item(server.url("/media")), test.shown));
        const auto *const sheet = presented<ComposeViewController>();
        ASSERT_NE(sheet, nullptr) << test.requests;
        EXPECT_EQ(sheet->serviceType(), ServiceType::Twitter);
        EXPECT_EQ(sheet->imageView.image().size(), test.attached) << test.requests;
        EXPECT_EQ(sheet->urlLabel.text(), "");
        EXPECT_EQ(server.requestCount(), test.requests);
        presented<ComposeViewController>()->sendButton.touchUpInside();
        ASSERT_NE(alert(), nullptr);
        EXPECT_EQ(alert()->title(), "Twitter Message");
        alert()->click(0);
    }
    EXPECT_TRUE(server.requests()[0].startsWith("GET /media/ete.jpg "));
}

TEST_F(ItemShareTest, AMailCarriesTitleAndPicture)
{
    const ScriptedServer server({answer("any bytes"), {Reset{}}});
    const struct
    {
        QImage shown;
        QByteArray beginning;
    } cases[] = {{redPicture(), "\xff\xd8\xff"}, {{}, "any bytes"}, {{}, ""}};
    for (const auto &test : cases) {
        run(&ItemShare::emailCall, ItemShare(item(server.url("/media")), test.shown));
        auto *const composer = presented<MailComposeViewController>();
        ASSERT_NE(composer, nullptr);
        const MailDraft draft = composer->draft();
        EXPECT_EQ(draft.subject, "ORVEL Application");
        EXPECT_EQ(draft.body, QString::fromUtf8("L'été <b>en direct</b>"));
        EXPECT_EQ(composer->recipientsField.text(), "");
        EXPECT_EQ(draft.attachmentType, "image/jpeg");
        EXPECT_EQ(draft.attachmentName, "photo.jpeg");
        EXPECT_TRUE(draft.attachment.startsWith(test.beginning));
        EXPECT_EQ(draft.attachment.isEmpty(), test.beginning.isEmpty());
        radios().dismissViewController(false);
    }
}

TEST_F(ItemShareTest, WithoutMailNothingIsFetched)
{
    const ScriptedServer server(answer("any bytes"));
    system->refused << "mailto";
    run(&ItemShare::emailCall, ItemShare(item(server.url("/media"))));
    EXPECT_EQ(server.requestCount(), 0u);
    ASSERT_NE(alert(), nullptr);
    EXPECT_EQ(alert()->title(), "Failure");
    EXPECT_EQ(app->window()->presentedViewController(), nullptr);
}
