#include "app/FavouriteStore.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace orvel;

namespace {

const QString key = "arrayFav";

JsonValue radio(int id)
{
    JsonValue entry = JsonValue::emptyObject();
    entry.set("id", QString::number(id));
    entry.set("title", QString::fromUtf8("Orvel \"Été\" 😎, n° %1").arg(id));
    entry.set("subtitle", JsonValue::null());
    return entry;
}

QStringList ids(const FavouriteStore &store)
{
    QStringList result;
    for (const JsonValue &entry : store.radios().value_or(FavouriteStore::Radios()))
        result << entry["id"].text();
    return result;
}

struct FavouriteStoreTest : testing::Test
{
    QTemporaryDir folder;
    QString path = folder.filePath("new/orvel.ini");
    UserDefaults defaults{path};
    FavouriteStore store{defaults};
};

} // namespace

TEST_F(FavouriteStoreTest, LosesTheFirstAndKeepsTheNextNewestFirst)
{
    EXPECT_FALSE(store.radios());
    store.add(radio(1));
    for (int id = 2; id <= 4; ++id) {
        ASSERT_TRUE(store.radios());
        EXPECT_EQ(store.radios()->size(), std::size_t(id - 2));
        store.add(radio(id));
        // The path itself would be answered from this process's memory.
        const QString copy = folder.filePath(QString::number(id));
        EXPECT_TRUE(QFile::copy(path, copy));
        EXPECT_EQ(UserDefaults(copy).objectForKey(key), defaults.objectForKey(key));
    }
    EXPECT_EQ(ids(store), QStringList({"4", "3", "2"}));
    EXPECT_EQ(store.radios()->at(2), radio(2));
}

TEST_F(FavouriteStoreTest, RemovesTheFirstOfAnId)
{
    store.remove(1);
    EXPECT_EQ(defaults.objectForKey(key).toByteArray(), "null");
    for (const int id : {1, 2, 1})
        store.add(radio(id));
    JsonValue odd = radio(0);
    odd.set("id", "1 bis"); // equal as an integer
    store.add(odd);
    for (const QString left : {"1 2 1", "2 1", "2"}) {
        store.remove(7);
        store.remove(1);
        EXPECT_EQ(ids(store).join(' '), left);
    }
    store.remove(2);
    EXPECT_EQ(defaults.objectForKey(key).toByteArray(), "[]");
}

TEST_F(FavouriteStoreTest, KeepsWhatIsDamagedAside)
{
    const QVariant damaged[] = {QByteArray(R"([{"id":"7")"), QByteArray("{}"), QByteArray("[7]"),
                                QByteArray("\xFF\0\1", 3),   QByteArray(),     QStringList({"a", "b"})};
    QString aside = "arrayFavDamaged";
    for (int n = 2; n <= 12; ++n) {
        const QVariant &stored = damaged[n % std::size(damaged)];
        defaults.setObject(stored, key);
        ASSERT_TRUE(store.radios());
        EXPECT_TRUE(store.radios()->empty());
        store.add(radio(1));
        EXPECT_EQ(ids(store), QStringList("1"));
        EXPECT_EQ(UserDefaults(path).objectForKey(aside), stored);
        // None is lost to the next, until the ninth is reused.
        aside = "arrayFavDamaged" + QString::number(std::min(n, 9));
    }
    EXPECT_EQ(defaults.objectForKey("arrayFavDamaged"), damaged[2]);
    EXPECT_FALSE(defaults.objectForKey("arrayFavDamaged10").isValid());
}

TEST_F(FavouriteStoreTest, DoesNotTakeMoreThanEveryStartCanRead)
{
    defaults.setObject(QByteArray("[]"), key);
    store.add(radio(1));
    JsonValue large = radio(2);
    large.set("subtitle", QString(4 * 1024 * 1024, 'x'));
    store.add(large);
    EXPECT_EQ(ids(store), QStringList("1"));
    store.add(radio(3));
    EXPECT_EQ(ids(store), QStringList({"3", "1"}));
}
