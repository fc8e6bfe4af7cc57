#include "layouts/kit/PictureItem.h"

#include <QPainter>
#include <QPainterPath>
#include <QQuickWindow>
#include <QSGImageNode>

namespace orvel {

PictureItem::PictureItem(QQuickItem *parent) : QQuickItem(parent) { setFlag(ItemHasContents); }

void PictureItem::setPicture(ImageView *picture)
{
    if (m_picture == picture)
        return;
    if (m_picture)
        m_picture->disconnect(this);
    m_picture = picture;
    if (m_picture)
        connect(m_picture, &ImageView::imageChanged, this, &PictureItem::imageChanged);
    Q_EMIT pictureChanged();
    imageChanged();
}

void PictureItem::setRadius(double radius)
{
    if (m_radius == radius)
        return;
    m_radius = radius;
    Q_EMIT radiusChanged();
    polish();
}

void PictureItem::setBackdrop(bool backdrop)
{
    if (m_backdrop == backdrop)
        return;
    m_backdrop = backdrop;
    Q_EMIT backdropChanged();
    polish();
}

void PictureItem::imageChanged()
{
    polish();
    const bool empty = !m_picture || m_picture->image().isNull();
    if (m_empty == empty)
        return;
    m_empty = empty;
    Q_EMIT emptyChanged();
}

void PictureItem::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size())
        polish();
}

void PictureItem::itemChange(ItemChange change, const ItemChangeData &data)
{
    if (change == ItemDevicePixelRatioHasChanged || change == ItemSceneChange)
        polish();
    QQuickItem::itemChange(change, data);
}

void PictureItem::updatePolish()
{
    m_drawn = {};
    if (window() && !m_empty && m_picture && width() >= 1 && height() >= 1) {
        // A backdrop of a few pixels, stretched smoothly, is a blur.
        const double scale =
            m_backdrop ? 7 / std::max(width(), height()) : window()->effectiveDevicePixelRatio();
        m_drawn = cropped(m_picture->image(), (size() * scale).toSize().expandedTo({2, 2}));
        // Stretched at once, each of the pixels' edges would show as a band.
        for (int doubled = 0; m_backdrop && doubled < 5; ++doubled)
            m_drawn = m_drawn.scaled(m_drawn.size() * 2, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    m_drawnNew = true;
    update();
}

// The middle of `image`, as much as has the proportions of `size`, at that size and with the corners cut
// round.
QImage PictureItem::cropped(const QImage &image, QSize size) const
{
    const QSize covering = image.size().scaled(size, Qt::KeepAspectRatioByExpanding).expandedTo(size);
    const QImage scaled = image.convertToFormat(QImage::Format_ARGB32_Premultiplied)
                              .scaled(covering, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const QPoint corner((covering.width() - size.width()) / 2, (covering.height() - size.height()) / 2);
    const QImage middle = scaled.copy(QRect(corner, size));
    if (m_radius <= 0)
        return middle;
    QImage round(size, QImage::Format_ARGB32_Premultiplied);
    round.fill(Qt::transparent);
    QPainter painter(&round);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(middle);
    const double radius = m_radius * size.width() / width();
    painter.drawRoundedRect(round.rect(), radius, radius);
    return round;
}

QSGNode *PictureItem::updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *)
{
    auto *node = static_cast<QSGImageNode *>(oldNode);
    if (m_drawn.isNull()) {
        delete node;
        return nullptr;
    }
    if (!node) {
        node = window()->createImageNode();
        node->setOwnsTexture(true);
        m_drawnNew = true;
    }
    if (m_drawnNew) {
        node->setTexture(window()->createTextureFromImage(m_drawn));
        node->setFiltering(QSGTexture::Linear);
        m_drawnNew = false;
    }
    node->setRect(boundingRect());
    return node;
}

} // namespace orvel
