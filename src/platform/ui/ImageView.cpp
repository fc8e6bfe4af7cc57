#include "platform/ui/ImageView.h"

namespace orvel {

ImageView::ImageView() = default;
ImageView::~ImageView() = default;

void ImageView::setImageWithProgressIndicatorAndURL(const QString &, QPointF indicatorCenter)
{
    setIndicatorCenter(indicatorCenter);
}

} // namespace orvel
