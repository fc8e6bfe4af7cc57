#include "platform/foundation/UserDefaults.h"

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

TEST(UserDefaultsTest, SaysSoWhenTheFileCannotBeWritten)
{
    UserDefaults defaults("/proc/none/orvel.ini");
    defaults.setObject(1, "a");
    EXPECT_FALSE(defaults.synchronise());
}
