#pragma once

#include <QString>
#include <functional>
#include <map>
#include <memory>

namespace orvel {

// The kinds of cells or views that a table or strip knows, by their identifier.
template<class View>
class ViewMakers
{
public:
    using Maker = std::function<std::shared_ptr<View>()>;

    void insert(const QString &identifier, Maker maker)
    {
        m_makers.insert_or_assign(identifier, std::move(maker));
    }
    // Returns a new one; nullptr for an unknown identifier.
    std::shared_ptr<View> make(const QString &identifier) const
    {
        const auto maker = m_makers.find(identifier);
        return maker == m_makers.end() ? nullptr : maker->second();
    }

private:
    std::map<QString, Maker> m_makers;
};

} // namespace orvel
