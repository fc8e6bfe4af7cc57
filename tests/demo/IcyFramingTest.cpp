#include "demo/IcyFraming.h"

#include <QString>

#include <gtest/gtest.h>

using orvel::demo::IcyFraming;

TEST(IcyFramingTest, PutsABlockAfterEachIntervalWhereverTheAudioIsSplit)
{
    const QByteArray audio(100, 'a');
    const QByteArray block = QByteArray("\x02StreamTitle='L'\xC3\xA9t\xC3\xA9';").leftJustified(33, '\0');
    const QByteArray expected =
        QByteArray(40, 'a') + block + QByteArray(40, 'a') + '\0' + QByteArray(20, 'a');
    for (const qsizetype size : {1, 7, 40, 100}) {
        IcyFraming framing(40);
        QByteArray framed;
        for (qsizetype at = 0; at < audio.size(); at += size)
            framed += framing.framed(audio.mid(at, size), "L'\xC3\xA9t\xC3\xA9");
        EXPECT_EQ(framed, expected) << "in pieces of " << size;
    }
    EXPECT_EQ(IcyFraming(0).framed(audio, "Titre"), audio);
}

TEST(IcyFramingTest, CutsATitleThatIsTooLongBetweenTwoCharacters)
{
    const QByteArray block = IcyFraming::block(QByteArray("\xC3\xA9").repeated(3000));
    EXPECT_EQ(block[0], 127);
    ASSERT_EQ(block.size(), 1 + 127 * 16);
    EXPECT_EQ(QString::fromUtf8(block).count(QChar(0xFFFD)), 0);
    EXPECT_TRUE(block.contains("';"));
}
