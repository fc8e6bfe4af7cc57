#include "platform/pictures/PictureCache.h"
#include "platform/pictures/PictureDecoder.h"
#include "platform/ui/outlets/ImageView.h"
#include "support/ScriptedServer.h"
#include "support/TestLoop.h"

#include <QBuffer>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace orvel;
using namespace orvel::test;

namespace {

const QByteArray drawing = "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>";

QByteArray png(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::red);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data();
}

struct PictureTest : testing::Test
{
    // Loads and waits for the end.
    static QSize load(ImageView &view, const QString &url)
    {
        view.setImageWithProgressIndicatorAndURL(url, QPointF(30, 40));
        EXPECT_TRUE(waitUntil([&] { return !view.loading(); }));
        return view.image().size();
    }
};

} // namespace

TEST_F(PictureTest, LoadsThePictureAndShowsItsProgress)
{
    Script halves = answer(png(300, 200));
    const QByteArray bytes = std::get<Send>(halves.back()).bytes;
    halves.back() = Send{bytes.first(bytes.size() / 2)};
    halves.insert(halves.end(), {Pause{0.05}, Send{bytes.sliced(bytes.size() / 2)}});
    const ScriptedServer server(halves);
    ImageView view;
    std::vector<double> progress;
    QObject::connect(&view, &ImageView::progressChanged, &view, [&] { progress.push_back(view.progress()); });
    EXPECT_EQ(load(view, server.url("/a.png")), QSize(300, 200));
    EXPECT_EQ(view.indicatorCenter(), QPointF(30, 40));
    EXPECT_EQ(view.image().pixelColor(5, 5), QColor(Qt::red));
    ASSERT_GE(progress.size(), 2u);
    EXPECT_TRUE(std::ranges::is_sorted(progress));
    EXPECT_EQ(progress.back(), 1);
}

TEST_F(PictureTest, AFailedLoadLeavesTheViewAsItWas)
{
    const QByteArray spoilt = png(10, 10).first(20) + QByteArray(500, 'x');
    const std::vector<Script> scripts{
        answer(png(10, 10), "HTTP/1.1 404 Not Found"),
        answer({}, "HTTP/1.1 304 Not Modified"), // of what was never asked
        answer("<!DOCTYPE html><html><body>Portal</body></html>"),
        answer(drawing),
        answer(spoilt),
        answer({}),
        answer(png(5000, 4000)), // too many pixels
        {Send{httpHead("Content-Length: 9000000\r\n") + png(9, 9)}, SendForever{"x", 0.01}},
        {Send{httpHead() + png(9, 9)}, SendForever{QByteArray(65536, 'x')}},
        {Send{httpHead("Content-Type: audio/aac\r\n")},
         SendForever{"\xFF\xF1\x50\x80........................"}},
        {Send{"ICY 200 OK\r\n\r\n"}, SendForever{"\xFF\xFB........................"}},
        {Reset{}},
    };
    const ScriptedServer server(scripts);
    ImageView view;
    view.setImage(QImage(7, 7, QImage::Format_RGB32));
    for (const QString &text : {QString(), QString("(null)/(null)"), QString("file:///etc/passwd")})
        EXPECT_EQ(load(view, text), QSize(7, 7));
    for (std::size_t i = 0; i < scripts.size(); ++i)
        EXPECT_EQ(load(view, server.url(QStringLiteral("/%1").arg(i))), QSize(7, 7)) << i;
    EXPECT_EQ(server.requestCount(), scripts.size());
    EXPECT_TRUE(waitUntil([&] { return server.openConnections() == 0; }))
        << "no load goes on after it has failed";
}

TEST_F(PictureTest, DecodesUprightAndScalesDownWhatIsVeryLarge)
{
    QBuffer lying; // its head says that it is to be turned
    QImage(30, 20, QImage::Format_RGB32).save(&lying, "JPEG");
    const QByteArray turned = "ffe100224578696600004d4d002a00000008000101120003000000010006000000000000";
    const std::pair<QByteArray, QSize> cases[] = {
        {QByteArray(lying.data()).insert(2, QByteArray::fromHex(turned)), {20, 30}},
        {png(1, 4000), {1, 2048}},
        {drawing, {0, 0}},
        {png(4000, 1000), {2048, 512}},
        {png(2048, 3), {2048, 3}},
        {png(15000, 1), {2048, 1}},
        {"GIF89a", {0, 0}}};
    for (const auto &[bytes, size] : cases) {
        std::optional<QSize> decoded;
        decodePicture(bytes, [&](const QImage &picture) { decoded = picture.size(); });
        EXPECT_FALSE(decoded) << "on a later turn";
        EXPECT_TRUE(waitUntil([&] { return decoded.has_value(); }));
        EXPECT_EQ(*decoded, size);
    }
}

TEST_F(PictureTest, ANewerLoadReplacesTheOneUnderWay)
{
    ScriptedServer slow(Script{WaitForRelease{}, Send{httpHead() + png(11, 11)}});
    const ScriptedServer quick(answer(png(22, 22)));
    auto leaving = std::make_unique<ImageView>();
    leaving->setImageWithProgressIndicatorAndURL(slow.url("/leaving"), {});
    ImageView view;
    view.setImageWithProgressIndicatorAndURL(slow.url("/slow"), {});
    ASSERT_TRUE(waitUntil([&] { return slow.requestCount() == 2; }));
    EXPECT_EQ(load(view, quick.url("/quick")), QSize(22, 22));
    leaving.reset();
    slow.release();
    slow.release();
    EXPECT_TRUE(waitUntil([&] { return slow.openConnections() == 0; }));
    letEventsRun();
    EXPECT_EQ(view.image().size(), QSize(22, 22));

    view.setImageWithProgressIndicatorAndURL(slow.url("/slow"), {});
    view.setImageWithProgressIndicatorAndURL("no URL", {});
    EXPECT_FALSE(view.loading()) << "also a text that makes no URL ends the load before";
}

TEST_F(PictureTest, AFreshPictureIsShownAtOnceAndAStaleOneValidated)
{
    const QByteArray fields = "Cache-Control: max-age=60\r\nETag: \"v1\"\r\n";
    const ScriptedServer server(
        std::vector<Script>{answer(png(30, 30), "HTTP/1.1 200 OK", fields),
                            {Send{httpHead("Cache-Control: max-age=60\r\n", "HTTP/1.1 304 Not Modified")}},
                            answer(png(40, 40), "HTTP/1.1 200 OK", fields)});
    const QString url = server.url("/kept");
    TakenClock clock;
    ImageView view;
    load(view, url);
    ImageView second;
    second.setImageWithProgressIndicatorAndURL(url, {});
    EXPECT_FALSE(second.loading());
    EXPECT_EQ(second.image().size(), QSize(30, 30));
    EXPECT_EQ(server.requestCount(), 1u);
    clock.turn(61);
    EXPECT_EQ(load(view, url), QSize(30, 30));
    ASSERT_EQ(server.requestCount(), 2u);
    EXPECT_TRUE(server.requests()[1].contains("If-None-Match: \"v1\"\r\n"));
    clock.turn(59);
    EXPECT_EQ(load(view, url), QSize(30, 30));
    EXPECT_EQ(server.requestCount(), 2u) << "the validation made it fresh again";
    clock.turn(2);
    EXPECT_EQ(load(view, url), QSize(40, 40)) << "the server had a newer one";
    EXPECT_TRUE(server.requests()[2].contains("If-None-Match: \"v1\"\r\n")) << "the validation left the tag";
}

TEST_F(PictureTest, AnAnswerThatMayNotBeStoredReplacesTheOneThatMayBeValidated)
{
    const QByteArray date = "Last-Modified: Tue, 13 May 2014 10:00:00 GMT\r\n";
    const ScriptedServer server({answer(png(30, 30), "HTTP/1.1 200 OK", "Cache-Control: no-cache\r\n" + date),
                                 answer(png(40, 40), "HTTP/1.1 200 OK", "Cache-Control: no-store\r\n" + date),
                                 answer(png(50, 50))});
    ImageView view;
    for (const int side : {30, 40, 50})
        EXPECT_EQ(load(view, server.url("/each")), QSize(side, side));
    EXPECT_TRUE(server.requests()[1].contains("If-Modified-Since: Tue, 13 May 2014 10:00:00 GMT\r\n"));
    EXPECT_FALSE(server.requests()[2].contains("If-Modified-Since"));
}

TEST_F(PictureTest, ThePictureOnDiskOutlivesTheProgramAndASpoiltOneIsLoadedAnew)
{
    const ScriptedServer server(answer(png(30, 30)));
    const Url url = *Url::fromText(server.url("/disk"));
    HeaderFields fields;
    fields.set("Cache-Control", "max-age=60");
    const QTemporaryDir earlier;
    PictureCache(earlier.path()).keep(url, fields, png(20, 20), QImage(20, 20, QImage::Format_RGB32));
    PictureCache thisRun(earlier.path());
    EXPECT_TRUE(thisRun.decoded(url).isNull());
    const auto stored = thisRun.stored(url);
    ASSERT_TRUE(stored && stored->fresh);
    EXPECT_EQ(stored->bytes, png(20, 20));

    ImageView view;
    ImageView leaving;
    PictureCache::shared().keep(url, fields, png(20, 20), {});
    leaving.setImageWithProgressIndicatorAndURL(url.text(), {});
    leaving.setImageWithProgressIndicatorAndURL({}, {}); // while the picture is decoded
    const std::tuple<QByteArray, QSize, std::size_t> files[] = {{png(20, 20), {20, 20}, 0},
                                                                {"spoilt", {30, 30}, 1}};
    for (const auto &[bytes, size, requests] : files) {
        PictureCache::shared().keep(url, fields, bytes, {});
        EXPECT_EQ(load(view, url.text()), size);
        EXPECT_EQ(server.requestCount(), requests);
    }
    EXPECT_TRUE(leaving.image().isNull());
}
