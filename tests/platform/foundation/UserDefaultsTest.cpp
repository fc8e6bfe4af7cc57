#include "platform/foundation/UserDefaults.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <sys/stat.h>

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

TEST(UserDefaultsTest, KeepsADamagedFileAsideAndGoesOnWithWhatCouldBeRead)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("orvel.ini");
    const QByteArray part = "[General]\npart=1\n";
    const struct
    {
        QByteArray bytes;
        qint64 size; // filled up with NULs
        bool readable;
    } files[] = {{part + "arrayF", 0, true},
                 {part + "[Gen", 0, true},
                 {part, 4096, true},
                 {QByteArray("\x8B\xF3[\0\x1F=\n\xFF", 8), 0, false},
                 {part, qint64(1) << 40, false}};
    QString aside = path + ".damaged";
    int copies = 1;
    for (const auto &[bytes, size, readable] : files) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        ASSERT_TRUE(file.resize(std::max(size, file.pos())));
        file.close();
        UserDefaults defaults(path);
        defaults.setObject(true, "new");
        EXPECT_TRUE(defaults.synchronise()) << bytes.constData();
        const UserDefaults reopened(path);
        EXPECT_TRUE(reopened.boolForKey("new") && reopened.boolForKey("part") == readable);
        QFile copy(aside);
        EXPECT_TRUE(copy.open(QIODevice::ReadOnly) && copy.read(bytes.size()) == bytes);
        aside = path + ".damaged" + QString::number(++copies);
    }
    QFile::remove(path);
    ASSERT_EQ(mkfifo(path.toUtf8(), 0600), 0);
    EXPECT_FALSE(UserDefaults(path).boolForKey("part"));
    EXPECT_TRUE(QFile::exists(aside));
}

TEST(UserDefaultsTest, LeavesADamagedFileAloneThatCannotBeKeptAside)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("orvel.ini");
    ASSERT_EQ(mkfifo(path.toUtf8(), 0600), 0);
    for (int number = 1; number <= 9; ++number)
        QDir(folder.path()).mkpath("orvel.ini.damaged" + (number > 1 ? QString::number(number) : ""));
    const auto keepsInMemory = [&] {
        UserDefaults defaults(path);
        defaults.setObject(true, "new");
        return defaults.boolForKey("new") && !defaults.synchronise() && !defaults.boolForKey("part");
    };
    EXPECT_TRUE(keepsInMemory());
    ASSERT_TRUE(QFile::remove(path));
    const QByteArray damaged = "[General]\npart=1\n[Gen";
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.write(damaged) && file.seek(0));
    EXPECT_TRUE(keepsInMemory());
    EXPECT_EQ(file.readAll(), damaged);
}
