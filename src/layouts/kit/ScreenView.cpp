#include "layouts/kit/ScreenView.h"

#include "platform/foundation/KeepAlive.h"

#include <QDir>
#include <QLoggingCategory>
#include <QQmlComponent>
#include <QQmlContext>
#include <tuple>

namespace orvel {

namespace {

Q_LOGGING_CATEGORY(lcKit, "orvel.kit")

// Returns the layout of that name in one of the folders of layouts.
QUrl layoutNamed(const QString &name)
{
    const QDir layouts(QStringLiteral(":/qt/qml/Orvel/Layouts"));
    for (const QString &room : layouts.entryList(QDir::Dirs)) {
        const QString path = layouts.filePath(QStringLiteral("%1/%2Layout.qml").arg(room, name));
        if (QFile::exists(path))
            return QUrl(QStringLiteral("qrc") + path);
    }
    qCCritical(lcKit).noquote() << "There is no layout for" << name;
    return {};
}

} // namespace

ScreenView::ScreenView(QQuickItem *parent) : QQuickItem(parent) { setFlag(ItemIsFocusScope); }

// The layout goes before the controller that it draws.
ScreenView::~ScreenView() { delete m_layout; }

void ScreenView::setController(ViewController *controller)
{
    if (controller == m_controller.get())
        return;
    if (m_layout) {
        // The layout's last hold on its screen: a child, so that it goes when nothing of the layout draws any
        // more.
        auto *keeper = new QObject(m_layout);
        keepUntilDestroyed(*keeper, m_controller);
        m_layout->setVisible(false);
        m_layout->setEnabled(false);
        m_layout->deleteLater();
        m_layout = nullptr;
    }
    if (m_controller)
        disconnect(m_controller.get(), nullptr, this, nullptr);
    m_controller = controller ? controller->shared_from_this() : nullptr;
    if (m_controller)
        connect(m_controller.get(), &ViewController::editingShouldEnd, this, &ScreenView::endEditing);
    if (isComponentComplete())
        makeLayout();
    Q_EMIT controllerChanged();
}

void ScreenView::componentComplete()
{
    QQuickItem::componentComplete();
    makeLayout();
}

void ScreenView::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (m_layout)
        m_layout->setSize(newGeometry.size());
}

void ScreenView::makeLayout()
{
    if (!m_controller)
        return;
    QQmlComponent component(qmlEngine(this), layoutNamed(m_controller->layoutName()));
    std::unique_ptr<QObject> made(component.isReady() ? component.beginCreate(qmlContext(this)) : nullptr);
    auto *layout = qobject_cast<QQuickItem *>(made.get());
    if (!layout) {
        qCCritical(lcKit).noquote() << component.errorString();
        return;
    }
    component.setInitialProperties(layout,
                                   {{QStringLiteral("screen"), QVariant::fromValue(m_controller.get())}});
    layout->setParentItem(this);
    layout->setSize(size());
    layout->setFocus(true);
    component.completeCreate();
    if (component.isError())
        qCCritical(lcKit).noquote() << component.errorString();
    std::ignore = made.release(); // the layout is the item's from here on
    QQmlEngine::setObjectOwnership(layout, QQmlEngine::CppOwnership);
    layout->setParent(this);
    m_layout = layout;
}

// What lies in front of the screen keeps the keyboard.
void ScreenView::endEditing()
{
    QQuickItem *focused = this;
    while (focused && focused->isFocusScope())
        focused = focused->scopedFocusItem();
    if (focused && focused->flags() & ItemAcceptsInputMethod)
        focused->setFocus(false);
}

} // namespace orvel
