#include "platform/foundation/UserDefaults.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <sys/stat.h>

using namespace orvel;

namespace {

struct UserDefaultsTest : testing::Test
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("orvel.ini");
};

} // namespace

// It names no process to wait for.
TEST_F(UserDefaultsTest, RemovesTheLockOfAProcessThatWasKilledTakingIt)
{
    ASSERT_TRUE(QFile(path + ".lock").open(QIODevice::WriteOnly));
    const UserDefaults defaults(path);
    EXPECT_FALSE(QFile::exists(path + ".lock"));
}

TEST_F(UserDefaultsTest, KeepsADamagedFileAsideAndGoesOnWithWhatCouldBeRead)
{
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

TEST_F(UserDefaultsTest, LeavesADamagedFileAloneThatCannotBeKeptAside)
{
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
