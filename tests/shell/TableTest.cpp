#include "platform/modal/InputGate.h"
#include "platform/ui/composers/MessageComposeViewController.h"
#include "platform/ui/outlets/SearchBar.h"
#include "platform/ui/table/List.h"
#include "platform/ui/table/TextHeight.h"
#include "shell/ShellFixture.h"

#include <QAccessible>
#include <QQmlComponent>

using namespace orvel;

namespace {

struct KitTest : test::ShellFixture
{
    std::unique_ptr<QQuickItem> page;

    KitTest() { show(); }
    // Draws `qml` for `outlet` on 320 by 480 points, before a button without size.
    void draw(const QByteArray &qml, QObject *outlet)
    {
        QQmlComponent component(qmlEngine(window().contentItem()->childItems().constFirst()));
        component.setData("import QtQuick\nimport Orvel.Kit\nItem { required property QtObject outlet\n" +
                              qml + "\nPressButton { text: 'other' } }",
                          QUrl("qrc:/test/Kit.qml"));
        page.reset(qobject_cast<QQuickItem *>(
            component.createWithInitialProperties({{"outlet", QVariant::fromValue(outlet)}})));
        ASSERT_TRUE(page) << component.errorString().toStdString();
        page->setParentItem(window().contentItem());
        page->setSize({320, 480});
        page->forceActiveFocus();
    }
    QQuickItem *drawn() const { return page->childItems().constFirst(); }
    QQuickItem *focused() { return window().activeFocusItem(); }
    // Returns the text of what has the keyboard after the keys.
    std::string after(std::initializer_list<Qt::Key> keys)
    {
        for (const Qt::Key one : keys)
            key(one);
        return focused()->property("text").toString().toStdString();
    }
};

// A hundred rows of 60 points, but for one that is higher than the table, each with a button.
struct TableTest : KitTest
{
    std::shared_ptr<test::List> list = test::make<test::List>();
    TableView &table = list->view;

    TableTest()
    {
        list->counts = {100};
        list->heights = {{40, 1000}};
        draw("Table { id: list; anchors.fill: parent; outlet: parent.outlet; bottomInset: 20; delegate: "
             "TableRow {\n"
             "table: list; text: row; required property QtObject cell; PressButton {} } }",
             &table);
    }
    ~TableTest() override { page.reset(); }
};

} // namespace

TEST_F(TableTest, ScrollsByDraggingAndGlidesWhereTheScreenWantsItTo)
{
    drag({160, 400}, {160, 200});
    EXPECT_GT(table.contentOffset(), 100);
    EXPECT_TRUE(list->chosen.empty());
    table.setContentOffset(0);
    table.scrollToRowAtIndexPath({0, 20}, TableView::ScrollPosition::Top, true);
    EXPECT_EQ(table.contentOffset(), 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return table.contentOffset() == 1200; }));
    table.scrollToRowAtIndexPath({0, 0}, TableView::ScrollPosition::Top, true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return table.contentOffset() < 1200; }));
    table.setContentOffset(100);
    QTest::qWait(400);
    EXPECT_EQ(table.contentOffset(), 100);
}

TEST_F(TableTest, KeysWalkThroughTheRowsAndScrollThemIntoSight)
{
    table.setContentOffset(30);
    EXPECT_EQ(after({Qt::Key_Tab}), "0");
    EXPECT_EQ(table.contentOffset(), 0);
    for (int i = 0; i < 30; ++i)
        key(Qt::Key_Down);
    EXPECT_EQ(after({Qt::Key_Return}), "30");
    EXPECT_EQ(table.contentOffset(), 32 * 60 + 20 - 480) << "with the row after it";
    EXPECT_EQ(after({Qt::Key_Tab, Qt::Key_Down}), "31") << "on from the button in the row";
    EXPECT_EQ(after({Qt::Key_End}), "99");
    EXPECT_EQ(table.contentOffset(), 99 * 60 + 1000 + 20 - 480);
    EXPECT_EQ(after({Qt::Key_Down, Qt::Key_PageUp}), "86");
    EXPECT_EQ(after({Qt::Key_Up, Qt::Key_Up, Qt::Key_PageDown, Qt::Key_PageDown}), "99");
    EXPECT_EQ(after({Qt::Key_Home, Qt::Key_Space}), "0");
    EXPECT_EQ(table.contentOffset(), 0);
    EXPECT_EQ(after({Qt::Key_PageDown}), "8");
    EXPECT_EQ(after({Qt::Key_PageUp, Qt::Key_Up}), "other") << "out of the list before its first row";
    EXPECT_EQ(list->chosen, QList<int>({30, 0}));
}

TEST_F(TableTest, KeysShowARowHigherThanTheTableBeforeTheyLeaveIt)
{
    table.setContentOffset(39 * 60);
    EXPECT_EQ(after({Qt::Key_Tab, Qt::Key_Down}), "40");
    EXPECT_EQ(table.contentOffset(), 40 * 60) << "from its top";
    EXPECT_EQ(after({Qt::Key_Down}), "40");
    EXPECT_EQ(table.contentOffset(), 40 * 60 + 432);
    EXPECT_EQ(after({Qt::Key_Down}), "41");
    table.setContentOffset(0);
    EXPECT_EQ(focused(), drawn()) << "the table keeps the keyboard of a row that left";
    EXPECT_EQ(after({Qt::Key_Down}), "0");
    const QQuickItem *row = focused();
    list->heights[0] = 80;
    table.reloadSections({0}, TableView::RowAnimation::Fade);
    EXPECT_EQ(focused(), row) << "a row reloaded keeps its place in the layout";
    EXPECT_EQ(row->property("cell").value<QObject *>(), table.cellForRowAtIndexPath({0, 0}).get());
    EXPECT_EQ(after({Qt::Key_Down}), "1");
    EXPECT_EQ(focused()->y(), 80);
}

TEST_F(TableTest, APressThatTheGateCutOffChoosesNothing)
{
    key(Qt::Key_Tab);
    QAccessible::setActive(true);
    QAccessibleInterface *row = QAccessible::queryAccessibleInterface(focused());
    const QString press = QAccessibleActionInterface::pressAction();
    EXPECT_EQ(row->role(), QAccessible::ListItem);
    EXPECT_EQ(row->actionInterface()->actionNames().count(press), 1);
    QTest::mousePress(&window(), Qt::LeftButton, {}, {160, 30});
    InputGate::shared().hold();
    QTest::mouseRelease(&window(), Qt::LeftButton, {}, {160, 30});
    tap({160, 90});
    row->actionInterface()->doAction(press);
    InputGate::shared().release();
    EXPECT_TRUE(list->chosen.empty());
    tap({160, 90});
    row->actionInterface()->doAction(press);
    EXPECT_EQ(list->chosen, QList<int>({1, 0}));
}

TEST_F(KitTest, AStripMovesByKeysAndShowsWhatIsSelected)
{
    const auto strip = test::make<test::Strip>();
    strip->view.reloadData();
    draw("Strip { id: list; anchors.fill: parent; outlet: parent.outlet\n"
         "delegate: StripItem { strip: list; text: row; implicitWidth: 50 } }",
         &strip->view);
    EXPECT_EQ(after({Qt::Key_Tab, Qt::Key_Right, Qt::Key_Right, Qt::Key_Left, Qt::Key_Return}), "1");
    QAccessible::setActive(true);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(focused())->role(), QAccessible::PageTab);
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(focused())->state().selected);
    EXPECT_EQ(after({Qt::Key_End, Qt::Key_Right}), "30");
    EXPECT_EQ(drawn()->property("contentX"), 30 * 50 - 320);
    tap({300, 100});
    EXPECT_EQ(after({Qt::Key_Home, Qt::Key_Left}), "0");
    EXPECT_EQ(drawn()->property("contentX"), 0);
    EXPECT_EQ(strip->told, QList<int>({1, -1, 30}));
    page.reset();
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
    after({Qt::Key_Tab, Qt::Key_B, Qt::Key_Return, Qt::Key_Tab, Qt::Key_Space, Qt::Key_C, Qt::Key_Return});
    after({Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Space, Qt::Key_D, Qt::Key_Return});
    bar.setShowsCancelButton(false);
    QTest::qWait(400);
    tap({300, 240}); // the button that empties it
    EXPECT_EQ(bar.text(), "");
    EXPECT_EQ(after({Qt::Key_Down}), "other");
    EXPECT_EQ(told, QStringList({"begin", "ab", "c", "cancel", "cd", "end"}));
    page.reset();
}

TEST_F(KitTest, TextsAreAsHighAsTheyAreDrawn)
{
    draw("Text { textFormat: Text.PlainText; wrapMode: Text.WordWrap; font.family: 'Inter' }", nullptr);
    EXPECT_EQ(textHeight("", 16, 280), 0);
    const QString line = "Tous les succès d'hier et d'aujourd'hui, anticonstitutionnellement";
    for (const QString &text : {line.first(9), line + "\n\n😀 日本 " + line, "\r\n" + line.repeated(9)}) {
        for (const auto &[size, width] : {std::pair(14, 253.0), {16, 253.0}, {16, 120.0}, {16, 253.0}}) {
            QFont font("Inter");
            font.setPixelSize(size);
            drawn()->setProperty("font", font);
            drawn()->setProperty("text", text);
            drawn()->setWidth(width);
            EXPECT_EQ(textHeight(text, size, width), drawn()->implicitHeight()) << size << ' ' << width;
        }
    }
}

TEST_F(KitTest, AScreenEndsItsEditing)
{
    const auto composer = std::make_shared<MessageComposeViewController>();
    screens.setRootViewController(composer);
    const auto edits = [&] { return focused()->flags().testFlag(QQuickItem::ItemAcceptsInputMethod); };
    while (!edits())
        key(Qt::Key_Tab);
    composer->endEditing();
    EXPECT_FALSE(edits());
}
