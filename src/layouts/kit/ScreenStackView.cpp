#include "layouts/kit/ScreenStackView.h"

#include "layouts/kit/LastInput.h"

#include <QQmlContext>
#include <QQmlEngine>
#include <algorithm>

namespace orvel {

ScreenStackView::ScreenStackView(QQuickItem *parent) : QQuickItem(parent)
{
    setFlag(ItemIsFocusScope);
    m_slide.setEasingCurve(QEasingCurve::OutCubic);
    connect(&m_slide, &QPropertyAnimation::finished, this, &ScreenStackView::endSlide);
}

ScreenStackView::~ScreenStackView() = default;

void ScreenStackView::setStack(ScreenStack *stack)
{
    Q_ASSERT(stack && !m_stack);
    m_stack = stack;
    connect(stack, &ScreenStack::changed, this, &ScreenStackView::follow);
    Q_EMIT stackChanged();
}

void ScreenStackView::componentComplete()
{
    QQuickItem::componentComplete();
    follow(false);
}

void ScreenStackView::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    for (ScreenView *view : m_views)
        view->setSize(newGeometry.size());
}

void ScreenStackView::follow(bool animated)
{
    if (!isComponentComplete())
        return;
    endSlide();
    ScreenView *const oldTop = m_views.empty() ? nullptr : m_views.back();
    std::vector<ScreenView *> views;
    for (const std::shared_ptr<ViewController> &screen : m_stack->screens())
        if (screen)
            views.push_back(viewOf(*screen));
    const auto stays = [&views](ScreenView *view) { return std::ranges::find(views, view) != views.end(); };
    const bool oldTopStays = stays(oldTop);
    const bool slides = animated && m_duration > 0 && oldTop && !views.empty() && views.back() != oldTop;
    for (ScreenView *view : m_views)
        if (!stays(view) && !(slides && view == oldTop))
            dismiss(*view);
    m_views = std::move(views);
    showTop();
    if (slides)
        slide(*oldTop, oldTopStays);
}

ScreenView *ScreenStackView::viewOf(ViewController &screen)
{
    const auto found = std::ranges::find(m_views, &screen, &ScreenView::controller);
    if (found != m_views.end())
        return *found;
    auto *const view = new ScreenView(this);
    QQmlEngine::setContextForObject(view, qmlContext(this));
    view->setSize(size());
    view->setController(&screen);
    return view;
}

// Destroyed on a later turn: a handler of its own layout may have sent it away.
void ScreenStackView::dismiss(ScreenView &view)
{
    view.setEnabled(false);
    view.setVisible(false);
    view.deleteLater();
}

void ScreenStackView::showTop()
{
    for (ScreenView *view : m_views) {
        view->setVisible(view == m_views.back());
        view->setEnabled(view == m_views.back());
    }
    // Within the stack: a question in front of it keeps the keyboard.
    if (!m_views.empty())
        m_views.back()->setFocus(true, LastInput::focusReason());
}

void ScreenStackView::slide(ScreenView &oldTop, bool stays)
{
    m_oldTop = &oldTop;
    m_oldTopStays = stays;
    oldTop.setVisible(true);
    oldTop.setEnabled(false);
    ScreenView *const moving = stays ? m_views.back() : &oldTop;
    const double away = m_edge == Qt::RightEdge ? width() : height();
    m_slide.setTargetObject(moving);
    m_slide.setPropertyName(m_edge == Qt::RightEdge ? "x" : "y");
    m_slide.setDuration(m_duration);
    m_slide.setStartValue(stays ? away : 0.0);
    m_slide.setEndValue(stays ? 0.0 : away);
    m_slide.start();
}

// At its end, or before the next change.
void ScreenStackView::endSlide()
{
    m_slide.stop();
    if (!m_oldTop)
        return;
    ScreenView &oldTop = *std::exchange(m_oldTop, nullptr);
    m_views.back()->setPosition({});
    if (m_oldTopStays)
        oldTop.setVisible(false);
    else
        dismiss(oldTop);
}

} // namespace orvel
