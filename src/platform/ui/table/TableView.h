#pragma once

#include "platform/ui/outlets/View.h"
#include "platform/ui/table/TableViewCell.h"

#include <QAbstractListModel>
#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace orvel {

class TableElements;
class TableGeometry;
struct TablePlace;
class TableView;

struct IndexPath
{
    int section = 0;
    int row = 0;
    auto operator<=>(const IndexPath &) const = default;
};

class TableViewDataSource
{
public:
    virtual ~TableViewDataSource() = default;
    virtual int numberOfSectionsInTableView(TableView &) { return 1; }
    virtual int numberOfRowsInSection(TableView &tableView, int section) = 0;
    virtual std::shared_ptr<TableViewCell> cellForRowAtIndexPath(TableView &tableView,
                                                                 IndexPath indexPath) = 0;
};

class TableViewDelegate
{
public:
    virtual ~TableViewDelegate() = default;
    virtual double heightForRowAtIndexPath(TableView &, IndexPath) { return 44; }
    virtual double heightForHeaderInSection(TableView &, int /*section*/) { return 0; }
    virtual double heightForFooterInSection(TableView &, int /*section*/) { return 0; }
    // Asked for when the header's or footer's place comes into view. Null: nothing is shown there, whatever
    // its height.
    virtual QObject *viewForHeaderInSection(TableView &, int /*section*/) { return nullptr; }
    virtual QObject *viewForFooterInSection(TableView &, int /*section*/) { return nullptr; }
    virtual void didSelectRowAtIndexPath(TableView &, IndexPath) {}
    virtual void scrollViewDidScroll(TableView &) {}
};

// A list of rows in sections with headers and footers that scroll along. All heights are asked for at a
// reload (and when the width changes); a cell is asked for when its row comes into view, and again when it
// comes back. Main thread.
class TableView : public orvel::View
{
    Q_OBJECT
    QML_NAMED_ELEMENT(TableViewOutlet)
    QML_UNCREATABLE("Outlets belong to their screen")
    // The elements in view, in order from the top, with the roles "kind" ("header", "row" or "footer"),
    // "cell" (the header's or footer's view, or the row's cell), "rowTop", "rowHeight", "section" and "row".
    Q_PROPERTY(QAbstractItemModel *elements READ elements CONSTANT)
    Q_PROPERTY(double contentHeight READ contentHeight NOTIFY contentHeightChanged)
    // Points scrolled from the top. Written by the layout while the user scrolls, read by it when a screen
    // has set it.
    Q_PROPERTY(double contentOffset READ contentOffset WRITE setContentOffset NOTIFY contentOffsetChanged)
public:
    enum class RowAnimation { Fade = 0, None = 5 };
    using CellMaker = std::function<std::shared_ptr<TableViewCell>()>;

    TableView();
    ~TableView() override;

    // Neither is kept alive. Counts and heights are asked for anew when the table next has a frame.
    void setDataSource(std::weak_ptr<TableViewDataSource> dataSource);
    void setDelegate(std::weak_ptr<TableViewDelegate> delegate);

    void registerCell(const QString &identifier, CellMaker maker);
    // A new cell of the kind registered; null for an unknown identifier.
    std::shared_ptr<TableViewCell> dequeueReusableCellWithIdentifier(const QString &identifier) const;

    void reloadData();
    // Asks for the rows' cells again when they are in view, and only for these; their height stays.
    void reloadRowsAtIndexPaths(const std::vector<IndexPath> &indexPaths, RowAnimation animation);
    // The cell in view; null when the row is not.
    std::shared_ptr<TableViewCell> cellForRowAtIndexPath(IndexPath indexPath) const;

    double contentOffset() const { return m_contentOffset; }
    // Clamped to nothing: a layout's overshoot is reported as it is.
    void setContentOffset(double offset);
    double contentHeight() const;
    QAbstractItemModel *elements() const;

    // Layouts call it when a row is tapped, clicked or chosen by keyboard.
    Q_INVOKABLE void selectRow(int section, int row);

Q_SIGNALS:
    void contentHeightChanged();
    void contentOffsetChanged();

private:
    // Runs `change`; on a later turn of the event loop when the table is just asking or changing its
    // elements.
    void change(const std::function<void()> &change);
    void askCounts();
    void askHeights();
    // Makes the elements those that are in view. Those already shown stay, but for the places that `again`
    // names.
    void showElementsInView(const std::function<bool(const TablePlace &)> &again);
    void frameHasChanged();

    double m_contentOffset = 0;
    double m_width = 0;
    double m_heightTold = 0; // in contentHeightChanged
    bool m_loaded = false;
    bool m_changing = false;
    std::unique_ptr<TableGeometry> m_geometry;
    std::unique_ptr<TableElements> m_elements;
    std::weak_ptr<TableViewDataSource> m_dataSource;
    std::weak_ptr<TableViewDelegate> m_delegate;
    std::map<QString, CellMaker> m_makers;
};

} // namespace orvel
