#include "platform/foundation/UserDefaults.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace orvel;

TEST(UserDefaultsTest, ASecondReaderSeesWhatWasSynchronised)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("new/orvel.ini");
    UserDefaults writer(path);
    EXPECT_FALSE(writer.objectForKey("user_save").isValid());
    writer.setObject(true, "user_save");
    writer.setObject(QByteArray("\0\xFF=;", 4), "arrayFav");
    EXPECT_TRUE(writer.synchronise());
    const UserDefaults reader(path);
    EXPECT_TRUE(reader.boolForKey("user_save"));
    EXPECT_EQ(reader.objectForKey("arrayFav").toByteArray(), QByteArray("\0\xFF=;", 4));
    EXPECT_FALSE(reader.boolForKey("isLogin"));
}

TEST(UserDefaultsTest, WritesAtOnceAfterAProcessWasKilledTakingTheLock)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("orvel.ini");
    ASSERT_TRUE(QFile(path + ".lock").open(QIODevice::WriteOnly)); // it had written nothing yet
    UserDefaults defaults(path);
    defaults.setObject(1, "a");
    QElapsedTimer timer;
    timer.start();
    EXPECT_TRUE(defaults.synchronise());
    EXPECT_LT(timer.elapsed(), 20'000);
}

TEST(UserDefaultsTest, SaysSoWhenTheFileCannotBeWritten)
{
    UserDefaults defaults("/proc/none/orvel.ini");
    defaults.setObject(1, "a");
    EXPECT_FALSE(defaults.synchronise());
}
