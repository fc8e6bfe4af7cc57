#pragma once

#include <QImage>
#include <QString>

namespace orvel {

class ViewController;

// The mail that recommends an item of a list: the item's title, and its picture as "photo.jpeg". Main thread.
class ItemMail
{
public:
    // Shows the mail's composer over `presenter`, without a recipient. The picture is `shown` on white, or
    // the file at `pictureUrl` when `shown` is null. Waits for that one (see HttpRequest), so only from a
    // delayed perform. The mail has no attachment when that fails. Hides the progress overlay. Deliberate:
    // the file is sent as it comes, also when it is not a JPEG (ItemShareTest.AMailCarriesTitleAndPicture).
    static void emailCall(const QString &title, const QString &pictureUrl, const QImage &shown,
                          ViewController &presenter);
};

} // namespace orvel
