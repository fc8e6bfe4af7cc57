#include "platform/pictures/PictureOnWhite.h"

#include <QPainter>

namespace orvel {

QImage pictureOnWhite(const QImage &picture)
{
    if (!picture.hasAlphaChannel())
        return picture;
    QImage ground(picture.size(), QImage::Format_RGB32);
    ground.fill(Qt::white);
    QPainter(&ground).drawImage(0, 0, picture);
    return ground;
}

} // namespace orvel
