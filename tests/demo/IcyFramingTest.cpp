#include "demo/IcyFraming.h"

#include <QString>

#include <gtest/gtest.h>

using orvel::demo::IcyFraming;

TEST(IcyFramingTest, CutsATitleThatIsTooLongBetweenTwoCharacters)
{
    const QByteArray block = IcyFraming::block(QByteArray("\xC3\xA9").repeated(3000));
    EXPECT_EQ(block[0], 127);
    ASSERT_EQ(block.size(), 1 + 127 * 16);
    EXPECT_EQ(QString::fromUtf8(block).count(QChar(0xFFFD)), 0);
    EXPECT_TRUE(block.contains("';"));
}
