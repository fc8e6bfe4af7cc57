#include "app/ShareData.h"

#include "app/GLOB.h"
#include "platform/foundation/FormatText.h"
#include "platform/foundation/Log.h"
#include "platform/pictures/PictureDecoder.h"
#include "platform/pictures/PictureDownload.h"
#include "platform/pictures/PictureOnWhite.h"
#include "platform/ui/composers/ComposeViewController.h"
#include "platform/ui/containers/Window.h"

namespace orvel {

namespace {

std::shared_ptr<ComposeViewController> shareSheet(ServiceType serviceType, const QString &text)
{
    const auto sheet = std::make_shared<ComposeViewController>(serviceType);
    sheet->setInitialText(formatText(text));
    sheet->setCompletionHandler([serviceType](ComposeResult result) {
        qCInfo(logApp, "start completion block");
        if (result == ComposeResult::Cancelled)
            return;
        const QString service =
            serviceType == ServiceType::Facebook ? QStringLiteral("Facebook") : QStringLiteral("Twitter");
        Window::showAlert(service + QStringLiteral(" Message"),
                          result == ComposeResult::Done ? service + QStringLiteral(" Post Successfull")
                                                        : QString(),
                          {QStringLiteral("Ok")});
    });
    return sheet;
}

} // namespace

void ShareData::functionFacebook(const QString &text, const QString &url, ViewController &presenter) const
{
    const auto sheet = shareSheet(ServiceType::Facebook, text);
    sheet->addURL(formatText(url));
    presenter.presentViewController(sheet, true);
}

void ShareData::functionTwitter(const QString &text, const QImage &image, const QString &url,
                                ViewController &presenter) const
{
    const auto show = [text, presenter = presenter.shared_from_this()](const QImage &picture) {
        const auto sheet = shareSheet(ServiceType::Twitter, text);
        sheet->addImage(pictureOnWhite(picture));
        presenter->presentViewController(sheet, true);
        GLOB::glob_HideHud();
    };
    if (!image.isNull())
        show(image);
    else if (const std::optional<QByteArray> bytes = downloadPicture(url))
        decodePicture(*bytes, show);
}

} // namespace orvel
