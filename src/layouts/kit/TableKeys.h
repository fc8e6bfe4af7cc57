#pragma once

#include "platform/ui/table/TableView.h"

#include <QQmlEngine>
#include <QQuickItem>

namespace orvel {

// Moves the keyboard's focus through a table's elements, and scrolls it to where the focus goes. Elements
// that take no focus by Tab are passed over. Main thread.
class TableKeys : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(orvel::TableView *table MEMBER m_table REQUIRED)
    // The parent of the elements' items, each at its place from the top of the list.
    Q_PROPERTY(QQuickItem *elements MEMBER m_elements REQUIRED)
public:
    // Arrow keys go to the next element, Page Up and Page Down a page further, Home and End to the list's
    // ends. Up leaves the table before its first element. Returns false for any other key, and for an arrow
    // key that moves nothing.
    Q_INVOKABLE bool press(int key);
    // Scrolls so far that what lies there can be seen, with as much of its neighbours as fits. What is higher
    // than the table is shown from its top.
    Q_INVOKABLE void reveal(double top, double height);

private:
    // A direction is 1 down the list, and -1 up.
    bool step(int direction);
    bool page(int direction);
    bool goToEnd(int direction);
    void focus(QQuickItem &item, int direction);
    // Returns the first element that takes focus after `top` in that direction, of those in view; nullptr
    // when there is none.
    QQuickItem *nearest(double top, int direction) const;
    // Returns whether the table has moved.
    bool scrollTo(double offset);

    orvel::TableView *m_table = nullptr;
    QQuickItem *m_elements = nullptr;
};

} // namespace orvel
