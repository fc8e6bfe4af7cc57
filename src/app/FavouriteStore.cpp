#include "app/FavouriteStore.h"

#include "api/json/JsonText.h"
#include "app/WebRadioEntry.h"
#include "platform/foundation/FreeName.h"
#include "platform/foundation/Log.h"

#include <algorithm>

namespace orvel {

namespace {

const QString key = QStringLiteral("arrayFav");
const QString damagedKey = QStringLiteral("arrayFavDamaged");
// Thousands of radios as stations send them. A server that sends them larger is not to slow down every start.
constexpr qsizetype maxArchiveBytes = 4 * 1024 * 1024;

bool isListOfRadios(const JsonValue &archive)
{
    return archive.isArray() && std::ranges::all_of(archive.values(), &JsonValue::isObject);
}

} // namespace

std::optional<FavouriteStore::Radios> FavouriteStore::radios() const
{
    const QVariant stored = m_defaults.objectForKey(key);
    if (!stored.isValid())
        return std::nullopt;
    const JsonValue archive = JSONFragmentValue(stored.toByteArray());
    if (isListOfRadios(archive))
        return archive.values();
    if (!archive.isNull()) {
        const QString aside = freeName(
            damagedKey, [this](const QString &name) { return m_defaults.objectForKey(name).isValid(); });
        qCWarning(logApp) << "The stored favourites are damaged; they are kept under" << aside;
        m_defaults.setObject(stored, aside);
        m_defaults.setObject(QByteArray("[]"), key);
        m_defaults.synchronise();
    }
    return Radios();
}

void FavouriteStore::add(const JsonValue &radio)
{
    std::optional<Radios> changed = radios();
    if (changed)
        changed->insert(changed->begin(), radio);
    store(changed);
}

void FavouriteStore::remove(qint64 id)
{
    std::optional<Radios> changed = radios();
    if (changed) {
        const auto found = std::ranges::find_if(
            *changed, [id](const JsonValue &radio) { return radio[WebRadioEntry::id].integerValue() == id; });
        if (found != changed->end())
            changed->erase(found);
    }
    store(changed);
}

void FavouriteStore::store(const std::optional<Radios> &radios)
{
    const QByteArray archive = JSONFragment(radios ? JsonValue::array(*radios) : JsonValue::null()).toUtf8();
    if (archive.isNull()) // not to be written, and told; what was stored stays
        return;
    if (archive.size() > maxArchiveBytes) {
        qCWarning(logApp) << "The favourites are too large to be stored:" << archive.size() << "bytes";
        return;
    }
    m_defaults.setObject(archive, key);
    m_defaults.synchronise();
}

} // namespace orvel
