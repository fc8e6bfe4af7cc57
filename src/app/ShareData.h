#pragma once

#include "app/ContactSheet.h"

#include <QImage>

namespace orvel {

// Sharing on Facebook and Twitter, and the contact sheet of the web radios' screens. Main thread.
class ShareData
{
public:
    // Presents a share sheet over `presenter` with the text and the URL. Null texts become "(null)".
    void functionFacebook(const QString &text, const QString &url, ViewController &presenter) const;
    // Presents a share sheet with the text and a picture on white: `image`, or the one at `url` when `image`
    // is null. Waits for that one (see HttpRequest), so only from a delayed perform, and returns before it is
    // decoded and the sheet shown. The sheet has no picture when that fails. Hides the progress overlay with
    // the sheet's coming. Shows no sheet when the application quits meanwhile.
    void functionTwitter(const QString &text, const QImage &image, const QString &url,
                         ViewController &presenter) const;
    // Shows the contact sheet with the shifted numbering over `screen`. This object must outlive the sheet.
    void shairEmailOption(const std::shared_ptr<ViewController> &screen) { m_contact->ShowMessage(*screen); }

private:
    std::shared_ptr<ContactSheet> m_contact = ContactSheet::make(ContactNumbering::shifted);
};

} // namespace orvel
