#include "demo/app/Visitor.h"

#include "platform/modal/InputGate.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <functional>

namespace orvel {

namespace {

const QPointF nowhere(-1, -1);

// Calls `look` with every item that is shown, what lies behind first.
void visit(QQuickItem *item, const std::function<void(QQuickItem *)> &look)
{
    if (!item->isVisible() || item->opacity() == 0)
        return;
    look(item);
    for (QQuickItem *child : item->childItems())
        visit(child, look);
}

} // namespace

bool Visitor::isInSight(const QQuickItem &item) const
{
    return QRectF(QPointF(), m_window.size()).contains(item.mapToScene(item.boundingRect().center()));
}

QStringList Visitor::texts() const
{
    QStringList seen;
    visit(m_window.contentItem(), [&](QQuickItem *item) {
        const QString text = item->property("text").toString();
        if (!text.isEmpty() && isInSight(*item))
            seen << text;
    });
    return seen;
}

QQuickItem *Visitor::find(const QString &text) const
{
    QQuickItem *found = nullptr;
    visit(m_window.contentItem(), [&](QQuickItem *item) {
        if (item->property("text").toString() == text && isInSight(*item))
            found = item;
    });
    return found;
}

bool Visitor::touch(const QString &text)
{
    const QQuickItem *const item = find(text);
    if (!item || !item->isEnabled() || InputGate::shared().isHeld())
        return false;
    const QPointF place = item->mapToScene(item->boundingRect().center());
    if (std::exchange(m_place, place) != place)
        return false;
    QTest::mouseClick(&m_window, Qt::LeftButton, {}, place.toPoint());
    m_place = nowhere;
    return true;
}

void Visitor::type(const QString &text)
{
    for (const char letter : text.toLatin1())
        QTest::keyClick(&m_window, letter);
}

void Visitor::press(Qt::Key key) { QTest::keyClick(&m_window, key); }

void Visitor::scroll(double share)
{
    QQuickItem *list = nullptr;
    visit(m_window.contentItem(), [&](QQuickItem *item) {
        if (item->inherits("QQuickFlickable") && item->isEnabled() && isInSight(*item))
            list = item;
    });
    if (!list)
        return;
    const double end = std::max(0.0, list->property("contentHeight").toDouble() - list->height());
    [[maybe_unused]] const bool isScrolled = list->setProperty("contentY", share * end);
    Q_ASSERT(isScrolled);
}

void Visitor::resize(int width, int height) { m_window.resize(width, height); }

bool Visitor::savePicture(const QString &path) { return m_window.grabWindow().save(path); }

} // namespace orvel
