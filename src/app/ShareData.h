#pragma once

#include "app/ContactSheet.h"

#include <QImage>

namespace orvel {

// Sharing on Facebook and Twitter, and the contact sheet of the web radios' screens. Main thread.
class ShareData
{
public:
    // A share sheet over `presenter` with the text and the URL.
    void functionFacebook(const QString &text, const QString &url, ViewController &presenter) const;
    // A share sheet with the text and a picture: `image`, or when that is a null one what `url` names. That
    // is waited for (see HttpRequest), so call it from a delayed perform; a picture that can't be had is left
    // out. Hides the progress overlay.
    void functionTwitter(const QString &text, const QImage &image, const QString &url,
                         ViewController &presenter) const;
    // The contact sheet with the shifted numbering. This object has to last until a button was chosen.
    void shairEmailOption(const std::shared_ptr<ViewController> &screen) { m_contact->ShowMessage(*screen); }

private:
    std::shared_ptr<ContactSheet> m_contact = ContactSheet::make(ContactNumbering::shifted);
};

} // namespace orvel
