#pragma once

#include <QPointF>
#include <QString>
#include <QStringList>
#include <Qt>

class QQuickItem;
class QQuickWindow;

namespace orvel {

// Eyes and a hand for the application's window: finds what can be seen by the text it bears and uses it by
// mouse and keys. Main thread.
class Visitor
{
public:
    explicit Visitor(QQuickWindow &window) : m_window(window) {}

    // What can be read now, what lies behind first.
    QStringList texts() const;
    bool sees(const QString &text) const { return find(text) != nullptr; }
    // Touches what bears `text`, in front where there are several. False until that is there and has stood
    // still since the last call, and while the application takes no input: to be tried again.
    bool touch(const QString &text);
    // Latin letters, key by key, into what has the keyboard.
    void type(const QString &text);
    void press(Qt::Key key);
    // Scrolls the list or page in front to its start (0), its end (1) or between.
    void scroll(double share);
    void resize(int width, int height);
    bool savePicture(const QString &path);

private:
    // Its middle is within the window.
    bool isInSight(const QQuickItem &item) const;
    QQuickItem *find(const QString &text) const;

    QQuickWindow &m_window;
    QPointF m_place; // of what is to be touched, when it was looked for last
};

} // namespace orvel
