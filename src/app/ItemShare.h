#pragma once

#include "api/json/JsonValue.h"

#include <QImage>

namespace orvel {

class ViewController;

// Shares an item of a list ("title", "media_url", "picture"), for the screens that have share buttons on
// their rows. Main thread.
class ItemShare
{
public:
    // `shown` is the picture that the item's cell shows now, or a null image.
    explicit ItemShare(const JsonValue &item, const QImage &shown = {});

    void functionFacebook(ViewController &presenter) const;
    // Both may wait for the picture, so only from a delayed perform, under the progress overlay, which they
    // hide.
    void callTwiter(ViewController &presenter) const;
    void emailCall(ViewController &presenter) const;

private:
    QString m_title;
    QString m_url; // of the picture
    QImage m_shown;
};

} // namespace orvel
