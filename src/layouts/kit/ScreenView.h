#pragma once

#include "platform/ui/containers/ViewController.h"

#include <QPointer>
#include <QQuickItem>

namespace orvel {

// The place where a screen is shown: makes the layout of the controller's layout name and fills itself with
// it. A layout whose screen was replaced is destroyed on a later turn, never inside one of its own handlers,
// and its screen lives on until then.
class ScreenView : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(orvel::ViewController *controller READ controller WRITE setController NOTIFY controllerChanged)
public:
    explicit ScreenView(QQuickItem *parent = nullptr);
    ~ScreenView() override;

    ViewController *controller() const { return m_controller.get(); }
    void setController(ViewController *controller);
    // Returns nullptr without a screen, and when its layout could not be made.
    QQuickItem *layoutItem() const { return m_layout; }

Q_SIGNALS:
    void controllerChanged();

protected:
    void componentComplete() override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;

private:
    void makeLayout();
    void endEditing();

    std::shared_ptr<ViewController> m_controller;
    QPointer<QQuickItem> m_layout;
};

} // namespace orvel
