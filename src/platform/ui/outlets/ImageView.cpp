#include "platform/ui/outlets/ImageView.h"

#include "platform/pictures/PictureLoad.h"

namespace orvel {

ImageView::ImageView() = default;

ImageView::~ImageView()
{
    if (m_load)
        m_load->cancel();
}

void ImageView::setImageWithProgressIndicatorAndURL(const QString &url, QPointF indicatorCenter)
{
    if (m_load)
        std::exchange(m_load, nullptr)->cancel();
    setIndicatorCenter(indicatorCenter);
    setProgress(0);
    const std::optional<Url> address = Url::fromText(url);
    const QImage kept = address ? PictureCache::shared().decoded(*address) : QImage();
    if (!kept.isNull())
        setImage(kept);
    setLoading(address && kept.isNull());
    if (!loading())
        return;
    m_load = PictureLoad::start(*address, {[this](double fraction) { setProgress(fraction); },
                                           [this](const QImage &picture) {
                                               m_load.reset();
                                               if (!picture.isNull())
                                                   setImage(picture);
                                               setLoading(false);
                                           }});
}

} // namespace orvel
