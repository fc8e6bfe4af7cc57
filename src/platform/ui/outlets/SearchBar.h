#pragma once

#include "platform/ui/outlets/View.h"

#include <QString>
#include <functional>

namespace orvel {

// A field for a search text. Layouts write the text back as it is typed.
class SearchBar : public orvel::View
{
    Q_OBJECT
    QML_NAMED_ELEMENT(SearchBarOutlet)
    QML_UNCREATABLE("Outlets belong to their screen")
public:
    using Action = std::function<void(SearchBar &searchBar)>;
    SearchBar() = default;
    void setSearchButtonClicked(Action action) { m_action = std::move(action); }
    // Layouts call it when the search key or button is chosen.
    Q_INVOKABLE void searchButtonClicked()
    {
        // A copy: the action may end the screen that owns this bar.
        if (const Action action = m_action)
            action(*this);
    }

    OUTLET_VALUE(QString, text, setText) = QStringLiteral("");
    // The inner field is drawn on dark grey with its text at the left.
    OUTLET_VALUE(bool, darkField, setDarkField) = false;
    Action m_action;
};

} // namespace orvel
