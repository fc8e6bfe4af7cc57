#pragma once

#include "platform/ui/outlets/View.h"
#include "platform/ui/table/TableViewDelegate.h"
#include "platform/ui/table/ViewMakers.h"

#include <QAbstractListModel>
#include <functional>
#include <memory>
#include <vector>

namespace orvel {

class TableElements;
class TableGeometry;
struct TablePlace;

// A list of rows in sections with headers and footers that scroll along. All counts and heights are asked for
// at a reload, all heights again when the width changes. A cell or a header's or footer's view is asked for
// when its place comes into view, and again when it comes back. Main thread.
class TableView : public orvel::View
{
    Q_OBJECT
    QML_NAMED_ELEMENT(TableViewOutlet)
    QML_UNCREATABLE("Outlets belong to their screen")
    // The elements in view, in order from the top, with the roles "kind" ("header", "row" or "footer"),
    // "cell" (the row's cell, or the header's or footer's view), "rowTop", "rowHeight", "section" and "row".
    Q_PROPERTY(QAbstractItemModel *elements READ elements CONSTANT)
    Q_PROPERTY(double contentHeight READ contentHeight NOTIFY contentHeightChanged)
    // Points scrolled from the top. Written by the layout while the user scrolls, read by it when a screen
    // has set it.
    Q_PROPERTY(double contentOffset READ contentOffset WRITE setContentOffset NOTIFY contentOffsetChanged)
    // Points at the table's lower end that something else covers. Set by the layout.
    Q_PROPERTY(double bottomInset MEMBER m_bottomInset)
public:
    // Rows and sections change at once with either.
    enum class RowAnimation { Fade = 0, None = 5 };
    enum class ScrollPosition { Top = 1 };

    TableView();
    ~TableView() override;

    // Neither is kept alive. Counts and heights are asked for anew when the table next has a frame.
    void setDataSource(std::weak_ptr<TableViewDataSource> dataSource);
    void setDelegate(std::weak_ptr<TableViewDelegate> delegate);

    void registerCell(const QString &identifier, ViewMakers<TableViewCell>::Maker maker);
    void registerHeaderFooterView(const QString &identifier, ViewMakers<View>::Maker maker);
    // Both return a new one of the kind registered; nullptr for an unknown identifier.
    std::shared_ptr<TableViewCell> dequeueReusableCellWithIdentifier(const QString &identifier) const;
    std::shared_ptr<View> dequeueReusableHeaderFooterViewWithIdentifier(const QString &identifier) const;

    void reloadData();
    // Asks for the rows' heights again, and for the cells of those in view. Rows that do not exist are
    // skipped.
    void reloadRowsAtIndexPaths(const std::vector<IndexPath> &indexPaths, RowAnimation animation);
    // Asks for the sections' counts and heights again, and for what of them is in view; everything else keeps
    // its cell. Sections that do not exist are skipped.
    void reloadSections(const std::vector<int> &sections, RowAnimation animation);
    // Returns the cell in view; nullptr when the row is not in view.
    std::shared_ptr<TableViewCell> cellForRowAtIndexPath(IndexPath indexPath) const;

    // Moves the row to `position`, or as near to it as the list's end allows. When animated, the layout moves
    // it. No effect for a row that does not exist.
    void scrollToRowAtIndexPath(IndexPath indexPath, ScrollPosition position, bool animated);
    double contentOffset() const { return m_contentOffset; }
    // Not clamped: a layout's overshoot is reported as it is. A value that is not finite has no effect.
    void setContentOffset(double offset);
    double contentHeight() const;
    double maxOffset() const; // negative when all of the list can be seen
    double bottomInset() const { return m_bottomInset; }
    QAbstractItemModel *elements() const;

    // Called by layouts when a row is tapped, clicked or chosen by keyboard.
    Q_INVOKABLE void selectRow(int section, int row);

Q_SIGNALS:
    void contentHeightChanged();
    void contentOffsetChanged();
    // Asks the layout to move there little by little.
    void scrollWanted(double offset);

private:
    // Runs `change`; on a later turn of the event loop when the table is just asking or changing its
    // elements.
    void change(const std::function<void()> &change);
    void askCounts();
    void askHeights();
    // Returns what asks the delegate for a height.
    std::function<double(const TablePlace &)> heights();
    void tellContentHeight();
    // Makes the elements those that are in view. Those already shown stay, but for the places that `again`
    // names.
    void showElementsInView(const std::function<bool(const TablePlace &)> &again);
    void frameHasChanged();

    double m_contentOffset = 0;
    double m_bottomInset = 0;
    double m_width = 0;
    double m_heightTold = 0; // in contentHeightChanged
    bool m_loaded = false;
    bool m_changing = false;
    std::unique_ptr<TableGeometry> m_geometry;
    std::unique_ptr<TableElements> m_elements;
    std::weak_ptr<TableViewDataSource> m_dataSource;
    std::weak_ptr<TableViewDelegate> m_delegate;
    ViewMakers<TableViewCell> m_cells;
    ViewMakers<View> m_headersAndFooters;
};

} // namespace orvel
