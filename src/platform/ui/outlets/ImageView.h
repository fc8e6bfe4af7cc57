#pragma once

#include "platform/ui/outlets/View.h"

#include <QImage>
#include <QPointF>
#include <memory>

namespace orvel {

class PictureLoad;

// A picture, decoded here so that screens can hand it on; the layout only draws it.
class ImageView : public orvel::View
{
    Q_OBJECT
    QML_NAMED_ELEMENT(ImageViewOutlet)
    QML_UNCREATABLE("Outlets belong to their screen")
public:
    ImageView();
    ~ImageView() override;

    // Loads the picture at `url` into the view and shows a circular progress indicator, centred at
    // `indicatorCenter`, until it has arrived. A newer call replaces a load still under way; a failed load,
    // also of a text that is not a URL, leaves the view as it was. Pictures are kept in a cache on disk as
    // HTTP allows.
    void setImageWithProgressIndicatorAndURL(const QString &url, QPointF indicatorCenter);

    OUTLET_VALUE(QImage, image, setImage);
    OUTLET_VALUE(bool, loading, setLoading) = false;
    // 0 to 1 of the bytes announced; 0 while the server has announced no length.
    OUTLET_VALUE(double, progress, setProgress) = 0;
    // In the layout's own points; (0, 0) means the view's centre.
    OUTLET_VALUE(QPointF, indicatorCenter, setIndicatorCenter);
    std::shared_ptr<PictureLoad> m_load;
};

} // namespace orvel
