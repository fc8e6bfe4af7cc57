#include "app/ItemMail.h"

#include "app/MailPresenter.h"
#include "platform/pictures/PictureDownload.h"
#include "platform/pictures/PictureOnWhite.h"

#include <QBuffer>

namespace orvel {

namespace {

QByteArray jpegOf(const QImage &picture)
{
    constexpr int bestQuality = 100;
    QBuffer file;
    pictureOnWhite(picture).save(&file, "JPEG", bestQuality);
    return file.data();
}

} // namespace

void ItemMail::emailCall(const QString &title, const QString &pictureUrl, const QImage &shown,
                         ViewController &presenter)
{
    MailPresenter::compose(presenter, [&]() -> std::optional<MailDraft> {
        const std::optional<QByteArray> picture =
            shown.isNull() ? downloadPicture(pictureUrl) : jpegOf(shown);
        if (!picture)
            return std::nullopt;
        MailDraft draft;
        draft.recipients = {QStringLiteral("")};
        draft.body = title;
        draft.attachment = *picture;
        draft.attachmentType = QStringLiteral("image/jpeg");
        draft.attachmentName = QStringLiteral("photo.jpeg");
        return draft;
    });
}

} // namespace orvel
