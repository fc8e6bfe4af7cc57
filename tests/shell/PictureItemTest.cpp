#include "layouts/kit/PictureItem.h"

#include <QPainter>
#include <QQuickView>
#include <QTest>
#include <gtest/gtest.h>

using namespace orvel;

namespace {

// 200 by 100: blue, red in the middle half, blue.
QImage banner()
{
    QImage image(200, 100, QImage::Format_RGB32);
    image.fill(Qt::blue);
    QPainter(&image).fillRect(50, 0, 100, 100, Qt::red);
    return image;
}

class PictureItemTest : public ::testing::Test
{
protected:
    PictureItemTest()
    {
        window.resize(100, 100);
        window.setColor(Qt::white);
        item.setParentItem(window.contentItem());
        item.setSize({100, 100});
        item.setPicture(&outlet);
        window.show();
    }
    QColor at(int x, int y)
    {
        const QImage grabbed = window.grabWindow();
        return grabbed.pixelColor(QPoint(x, y) * grabbed.devicePixelRatio());
    }

    ImageView outlet;
    QQuickWindow window;
    PictureItem item;
};

TEST_F(PictureItemTest, FillsItsSizeWithTheMiddleOfThePicture)
{
    EXPECT_TRUE(item.isEmpty());
    EXPECT_EQ(at(50, 50), QColor(Qt::white));
    outlet.setImage(banner());
    EXPECT_FALSE(item.isEmpty());
    for (const QPoint point : {QPoint(3, 3), QPoint(50, 50), QPoint(96, 96)})
        EXPECT_EQ(at(point.x(), point.y()), QColor(Qt::red)) << point.x();
    item.setRadius(20);
    for (const QPoint corner : {QPoint(1, 1), QPoint(98, 98)})
        EXPECT_EQ(at(corner.x(), corner.y()), QColor(Qt::white));
    EXPECT_EQ(at(20, 20), QColor(Qt::red));
    item.setRadius(0);
    item.setSize({100, 50}); // the whole picture's proportions
    EXPECT_EQ(at(10, 25), QColor(Qt::blue));
    EXPECT_EQ(at(50, 75), QColor(Qt::white));
    outlet.setImage({});
    EXPECT_EQ(at(50, 25), QColor(Qt::white));
}

TEST_F(PictureItemTest, OutlivesItsOutlet)
{
    auto brief = std::make_unique<ImageView>();
    brief->setImage(banner());
    item.setPicture(brief.get());
    EXPECT_EQ(at(50, 50), QColor(Qt::red));
    brief.reset();
    item.setSize({80, 80});
    EXPECT_EQ(at(50, 50), QColor(Qt::white));
}

} // namespace
