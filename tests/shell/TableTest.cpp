#include "platform/modal/InputGate.h"
#include "platform/ui/composers/MessageComposeViewController.h"
#include "platform/ui/outlets/SearchBar.h"
#include "platform/ui/table/CollectionView.h"
#include "platform/ui/table/TableView.h"
#include "platform/ui/table/TextHeight.h"
#include "shell/ShellFixture.h"

#include <QAccessible>
#include <QQmlComponent>

using namespace orvel;

namespace {

constexpr double rowHeight = 60;

// A list that notes which rows were chosen, under a header; its row 40 is higher than the table.
struct Rows : TableViewDataSource, TableViewDelegate
{
    int numberOfRowsInSection(TableView &, int) override { return count; }
    std::shared_ptr<TableViewCell> cellForRowAtIndexPath(TableView &, IndexPath) override
    {
        return std::make_shared<TableViewCell>();
    }
    double heightForRowAtIndexPath(TableView &, IndexPath path) override
    {
        return path.row == 40 ? 1000 : rowHeight;
    }
    double heightForHeaderInSection(TableView &, int) override { return headerHeight; }
    std::shared_ptr<View> viewForHeaderInSection(TableView &, int) override
    {
        return std::make_shared<View>();
    }
    void didSelectRowAtIndexPath(TableView &, IndexPath path) override { chosen.push_back(path.row); }

    int count = 100;
    double headerHeight = 0;
    std::vector<int> chosen;
};

struct Items : CollectionViewDataSource, CollectionViewDelegate
{
    int numberOfItemsInSection(CollectionView &, int) override { return 31; }
    std::shared_ptr<CollectionViewCell> cellForItemAtIndexPath(CollectionView &, IndexPath) override
    {
        return std::make_shared<CollectionViewCell>();
    }
    void didSelectItemAtIndexPath(CollectionView &, IndexPath path) override { chosen.push_back(path.row); }

    std::vector<int> chosen;
};

struct KitTest : test::ShellFixture
{
    std::unique_ptr<QQuickItem> holder;
    QQuickItem *item = nullptr;

    KitTest() { show(); }
    // Draws `qml` for `outlet` on 320 by 480 points, before a button without size.
    void draw(const QByteArray &qml, QObject *outlet)
    {
        QQmlComponent component(qmlEngine(window().contentItem()->childItems().constFirst()));
        component.setData("import QtQuick\nimport Qt.labs.qmlmodels\nimport Orvel.Kit\n"
                          "Item { required property QtObject outlet\n" +
                              qml + "\nPressButton { text: 'other' } }",
                          QUrl("qrc:/test/Kit.qml"));
        holder.reset(qobject_cast<QQuickItem *>(
            component.createWithInitialProperties({{"outlet", QVariant::fromValue(outlet)}})));
        ASSERT_TRUE(holder) << component.errorString().toStdString();
        holder->setParentItem(window().contentItem());
        holder->setSize({320, 480});
        item = holder->childItems().constFirst();
        holder->forceActiveFocus();
    }
    QString focused() { return window().activeFocusItem()->property("text").toString(); }
    void keys(std::initializer_list<Qt::Key> pressed)
    {
        for (const Qt::Key one : pressed)
            key(one);
    }
};

struct TableTest : KitTest
{
    std::shared_ptr<Rows> rows = std::make_shared<Rows>();
    TableView table;

    TableTest()
    {
        table.setDataSource(rows);
        table.setDelegate(rows);
        table.reloadData();
        draw("Table { id: list; anchors.fill: parent; outlet: parent.outlet; delegate: DelegateChooser { "
             "role: 'kind'\n"
             "DelegateChoice { roleValue: 'row'; TableRow { table: list; text: row; PressButton {} } }\n"
             "DelegateChoice { TableItem { table: list; text: 'H' } } } }",
             &table);
    }
    ~TableTest() override { holder.reset(); }
};

} // namespace

TEST_F(TableTest, DraggingScrollsAndChoosesNothing)
{
    drag({160, 400}, {160, 200});
    EXPECT_GT(table.contentOffset(), 100);
    EXPECT_TRUE(rows->chosen.empty());
}

TEST_F(TableTest, KeysWalkThroughTheRowsAndScrollThemIntoSight)
{
    key(Qt::Key_Tab);
    for (int i = 0; i < 30; ++i)
        key(Qt::Key_Down);
    key(Qt::Key_Return);
    EXPECT_GT(table.contentOffset(), 31 * rowHeight - 480);
    keys({Qt::Key_Tab, Qt::Key_Down});
    EXPECT_EQ(focused(), "31") << "on from the button in the row";
    for (int i = 0; i < 31; ++i)
        key(Qt::Key_Up);
    key(Qt::Key_Space);
    EXPECT_EQ(table.contentOffset(), 0);
    EXPECT_EQ(rows->chosen, (std::vector<int>{30, 0}));

    key(Qt::Key_End);
    EXPECT_EQ(focused(), "99");
    EXPECT_EQ(table.contentOffset(), 99 * rowHeight + 1000 - 480);
    keys({Qt::Key_Down, Qt::Key_PageUp});
    EXPECT_EQ(focused(), "85");
    keys({Qt::Key_PageDown, Qt::Key_PageDown});
    EXPECT_EQ(focused(), "99");
    key(Qt::Key_Home);
    EXPECT_EQ(focused(), "0");
    EXPECT_EQ(table.contentOffset(), 0);
    key(Qt::Key_PageDown);
    EXPECT_EQ(focused(), "8");
    keys({Qt::Key_PageUp, Qt::Key_Up});
    EXPECT_EQ(focused(), "other") << "out of the list before its first row";
}

TEST_F(TableTest, KeysShowARowHigherThanTheTableBeforeTheyLeaveIt)
{
    table.scrollToRowAtIndexPath({0, 39}, TableView::ScrollPosition::Top, false);
    keys({Qt::Key_Tab, Qt::Key_Down});
    EXPECT_EQ(focused(), "40");
    EXPECT_EQ(table.contentOffset(), 40 * rowHeight) << "from its top";
    key(Qt::Key_Down);
    EXPECT_EQ(table.contentOffset(), 40 * rowHeight + 432);
    key(Qt::Key_Down);
    EXPECT_EQ(focused(), "41");
    table.setContentOffset(0);
    EXPECT_EQ(window().activeFocusItem(), item) << "the table keeps the keyboard of a row that left";
    key(Qt::Key_Down);
    EXPECT_EQ(focused(), "0");
}

TEST_F(TableTest, GlidesWhereTheScreenWantsItUntilSomebodyMovesIt)
{
    table.scrollToRowAtIndexPath({0, 20}, TableView::ScrollPosition::Top, true);
    EXPECT_EQ(table.contentOffset(), 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return table.contentOffset() == 20 * rowHeight; }));
    table.scrollToRowAtIndexPath({0, 0}, TableView::ScrollPosition::Top, true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return table.contentOffset() < 20 * rowHeight; }));
    table.setContentOffset(100);
    QTest::qWait(400);
    EXPECT_EQ(table.contentOffset(), 100);
}

TEST_F(TableTest, ASectionFoldsUnderTheKeyboardsHeader)
{
    rows->headerHeight = 46;
    table.reloadData();
    key(Qt::Key_Tab);
    EXPECT_EQ(focused(), "H");
    const QQuickItem *header = window().activeFocusItem();
    rows->count = 0;
    table.reloadSections({0}, TableView::RowAnimation::Fade);
    EXPECT_EQ(window().activeFocusItem(), header);
    rows->count = 2;
    table.reloadSections({0}, TableView::RowAnimation::Fade);
    keys({Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Return});
    EXPECT_EQ(rows->chosen, std::vector<int>{1});
}

TEST_F(TableTest, APressThatTheGateCutOffChoosesNothing)
{
    key(Qt::Key_Tab);
    QAccessible::setActive(true);
    QAccessibleInterface *row = QAccessible::queryAccessibleInterface(window().activeFocusItem());
    EXPECT_EQ(row->role(), QAccessible::ListItem);
    EXPECT_EQ(row->actionInterface()->actionNames().count(QAccessibleActionInterface::pressAction()), 1);
    QTest::mousePress(&window(), Qt::LeftButton, {}, {160, 30});
    InputGate::shared().hold();
    QTest::mouseRelease(&window(), Qt::LeftButton, {}, {160, 30});
    tap({160, 90});
    row->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    InputGate::shared().release();
    EXPECT_TRUE(rows->chosen.empty());
    tap({160, 90});
    row->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(rows->chosen, (std::vector<int>{1, 0}));
}

TEST_F(KitTest, AStripMovesByKeysAndShowsWhatIsSelected)
{
    const auto items = std::make_shared<Items>();
    CollectionView strip;
    strip.setDataSource(items);
    strip.setDelegate(items);
    strip.reloadData();
    draw("Strip { id: list; anchors.fill: parent; outlet: parent.outlet; delegate: StripItem { strip: list; "
         "text: row; implicitWidth: 50 } }",
         &strip);
    keys({Qt::Key_Tab, Qt::Key_Right, Qt::Key_Right, Qt::Key_Left, Qt::Key_Return});
    EXPECT_EQ(strip.selectedItem(), 1);
    QAccessible::setActive(true);
    const auto *one = QAccessible::queryAccessibleInterface(window().activeFocusItem());
    EXPECT_EQ(one->role(), QAccessible::PageTab);
    EXPECT_TRUE(one->state().selected);
    keys({Qt::Key_End, Qt::Key_Right, Qt::Key_Space});
    EXPECT_EQ(item->property("contentX"), 31 * 50 - 320);
    tap({300, 100});
    keys({Qt::Key_Home, Qt::Key_Left, Qt::Key_Space});
    EXPECT_EQ(item->property("contentX"), 0);
    EXPECT_EQ(items->chosen, (std::vector<int>{1, 30, 30, 0}));
    holder.reset();
}

TEST_F(KitTest, ASearchBarIsEditedWhileItsFieldOrItsButtonsHaveTheKeyboard)
{
    SearchBar bar;
    QStringList told;
    bar.setTextDidBeginEditing([&](SearchBar &) { told << "begin"; });
    bar.setTextDidEndEditing([&](SearchBar &) { told << "end"; });
    bar.setSearchButtonClicked([&](SearchBar &) { told << bar.text(); });
    bar.setCancelButtonClicked([&](SearchBar &) { told << "cancel"; });
    bar.setText("a");
    draw("SearchField { anchors.fill: parent; outlet: parent.outlet }", &bar);
    bar.setClearIcon("close.png");
    bar.setShowsCancelButton(true);
    QTest::qWait(400); // the button slides in
    keys({Qt::Key_Tab, Qt::Key_B, Qt::Key_Return, Qt::Key_Tab, Qt::Key_Space, Qt::Key_C, Qt::Key_Return});
    tap({300, 240});
    keys({Qt::Key_D, Qt::Key_Return});
    bar.setShowsCancelButton(false);
    QTest::qWait(400);
    tap({300, 240}); // the button that empties it
    EXPECT_EQ(bar.text(), "");
    key(Qt::Key_Down);
    EXPECT_EQ(told, QStringList({"begin", "ab", "c", "cancel", "cd", "end"}));
    holder.reset();
}

TEST_F(KitTest, TextsAreAsHighAsTheyAreDrawn)
{
    draw("Text { textFormat: Text.PlainText; wrapMode: Text.WordWrap; font.family: 'Inter' }", nullptr);
    EXPECT_EQ(textHeight("", 16, 280), 0);
    const QString line = "Tous les succès d'hier et d'aujourd'hui, anticonstitutionnellement";
    for (const QString &text :
         {QString("Été"), line, line + "\n\n😀 日本 " + line, "\r\n" + line.repeated(9)}) {
        for (const auto &[size, width] : {std::pair(14, 253.0), {16, 253.0}, {16, 280.0}, {16, 253.0}}) {
            QFont font("Inter");
            font.setPixelSize(size);
            item->setProperty("font", font);
            item->setProperty("text", text);
            item->setWidth(width);
            EXPECT_EQ(textHeight(text, size, width), item->implicitHeight()) << size << ' ' << width;
        }
    }
}

TEST_F(KitTest, AScreenEndsItsEditing)
{
    const auto composer = std::make_shared<MessageComposeViewController>();
    screens.setRootViewController(composer);
    const auto edits = [&] {
        return bool(window().activeFocusItem()->flags() & QQuickItem::ItemAcceptsInputMethod);
    };
    while (!edits())
        key(Qt::Key_Tab);
    composer->endEditing();
    EXPECT_FALSE(edits());
}
