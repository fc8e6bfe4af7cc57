#pragma once

#include "platform/ui/outlets/ImageView.h"

#include <QPointer>
#include <QQuickItem>

namespace orvel {

// Draws an image view's picture so that it fills the item, cropped at its middle, with round corners. The
// picture is brought to the item's device pixels once for each size, so it stays sharp and costs nothing
// while it is only moved.
class PictureItem : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(orvel::ImageView *picture READ picture WRITE setPicture NOTIFY pictureChanged)
    Q_PROPERTY(double radius READ radius WRITE setRadius NOTIFY radiusChanged)
    // A soft blur of the picture, as a ground for something else.
    Q_PROPERTY(bool backdrop READ isBackdrop WRITE setBackdrop NOTIFY backdropChanged)
    // True without a picture to draw.
    Q_PROPERTY(bool empty READ isEmpty NOTIFY emptyChanged)
public:
    explicit PictureItem(QQuickItem *parent = nullptr);

    ImageView *picture() const { return m_picture; }
    void setPicture(ImageView *picture);
    double radius() const { return m_radius; }
    void setRadius(double radius);
    bool isBackdrop() const { return m_backdrop; }
    void setBackdrop(bool backdrop);
    bool isEmpty() const { return m_empty; }

Q_SIGNALS:
    void pictureChanged();
    void radiusChanged();
    void backdropChanged();
    void emptyChanged();

protected:
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void updatePolish() override;
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override;

private:
    void imageChanged();
    QImage cropped(const QImage &image, QSize size) const;

    QPointer<ImageView> m_picture;
    double m_radius = 0;
    bool m_backdrop = false;
    bool m_empty = true;
    QImage m_drawn;         // as it goes to the screen
    bool m_drawnNew = true; // not yet handed to the scene graph
};

} // namespace orvel
