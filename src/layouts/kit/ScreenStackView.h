#pragma once

#include "layouts/kit/ScreenView.h"
#include "platform/ui/containers/ScreenStack.h"

#include <QPropertyAnimation>
#include <vector>

namespace orvel {

// Shows the top screen of a stack. Those beneath keep their layouts, so that whatever had the keyboard there
// gets it back. An animated change slides the screen that comes in from `edge`, or the one that goes out to
// it.
class ScreenStackView : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(orvel::ScreenStack *stack READ stack WRITE setStack NOTIFY stackChanged REQUIRED)
    // Qt::RightEdge or Qt::BottomEdge.
    Q_PROPERTY(Qt::Edge edge MEMBER m_edge NOTIFY edgeChanged)
    // Of a slide, in milliseconds; 0 for none.
    Q_PROPERTY(int duration MEMBER m_duration NOTIFY durationChanged)
public:
    explicit ScreenStackView(QQuickItem *parent = nullptr);
    ~ScreenStackView() override;

    ScreenStack *stack() const { return m_stack; }
    // Once, with a stack that outlives the item.
    void setStack(ScreenStack *stack);

Q_SIGNALS:
    void stackChanged();
    void edgeChanged();
    void durationChanged();

protected:
    void componentComplete() override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;

private:
    void follow(bool animated);
    ScreenView *viewOf(ViewController &screen);
    static void dismiss(ScreenView &view);
    void showTop();
    // `oldTop` slides out, or when it stays the new top slides in over it.
    void slide(ScreenView &oldTop, bool stays);
    void endSlide();

    ScreenStack *m_stack = nullptr;
    Qt::Edge m_edge = Qt::RightEdge;
    int m_duration = 0;
    std::vector<ScreenView *> m_views; // as the stack's screens
    QPropertyAnimation m_slide;
    ScreenView *m_oldTop = nullptr; // while something slides
    bool m_oldTopStays = false;
};

} // namespace orvel
