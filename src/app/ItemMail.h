#pragma once

#include <QImage>
#include <QString>

namespace orvel {

class ViewController;

// The mail that recommends an item of a list: the item's title, and its picture as "photo.jpeg".
class ItemMail
{
public:
    // Shows the mail's composer over `presenter`, the recipient left to the user. The picture is `shown`, or
    // when that is a null one what `pictureUrl` names. That is waited for (see HttpRequest), so call it from
    // a delayed perform. Hides the progress overlay.
    static void emailCall(const QString &title, const QString &pictureUrl, const QImage &shown,
                          ViewController &presenter);
};

} // namespace orvel
