#include "app/ItemShare.h"

#include "app/ItemMail.h"
#include "app/ShareData.h"
#include "platform/foundation/FormatText.h"

namespace orvel {

ItemShare::ItemShare(const JsonValue &item, const QImage &shown)
    : m_title(item["title"].text())
    , m_url(formatPath(item["media_url"].text(), item["picture"].text()))
    , m_shown(shown)
{
}

void ItemShare::functionFacebook(ViewController &presenter) const
{
    ShareData().functionFacebook(m_title, m_url, presenter);
}

void ItemShare::callTwiter(ViewController &presenter) const
{
    ShareData().functionTwitter(m_title, m_shown, m_url, presenter);
}

void ItemShare::emailCall(ViewController &presenter) const
{
    ItemMail::emailCall(m_title, m_url, m_shown, presenter);
}

} // namespace orvel
