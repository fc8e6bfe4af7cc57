#include "app/WebRadioEntry.h"

#include "platform/foundation/FormatText.h"

namespace orvel {

QString WebRadioEntry::picturePath(const JsonValue &radio)
{
    return formatPath(radio[imageurl].text(), radio[file].text());
}

QString WebRadioEntry::logoPath(const JsonValue &radio)
{
    return formatPath(radio[imageurl].text(), radio[thumb_smartphone].text());
}

} // namespace orvel
