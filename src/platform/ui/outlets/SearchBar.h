#pragma once

#include "platform/ui/outlets/View.h"

#include <QString>
#include <functional>

namespace orvel {

// A field for a search text, with a cancel button beside it while a screen wants one. Layouts write the text
// back as it changes.
class SearchBar : public orvel::View
{
    Q_OBJECT
    QML_NAMED_ELEMENT(SearchBarOutlet)
    QML_UNCREATABLE("Outlets belong to their screen")
public:
    using Action = std::function<void(SearchBar &searchBar)>;
    SearchBar() = default;

    void setSearchButtonClicked(Action action) { m_searchButtonClicked = std::move(action); }
    void setCancelButtonClicked(Action action) { m_cancelButtonClicked = std::move(action); }
    // The bar is edited while its field or one of its buttons has the keyboard.
    void setTextDidBeginEditing(Action action) { m_textDidBeginEditing = std::move(action); }
    void setTextDidEndEditing(Action action) { m_textDidEndEditing = std::move(action); }

    // Called by layouts.
    Q_INVOKABLE void searchButtonClicked() { run(m_searchButtonClicked); }
    Q_INVOKABLE void cancelButtonClicked() { run(m_cancelButtonClicked); }
    Q_INVOKABLE void beginEditing() { run(m_textDidBeginEditing); }
    Q_INVOKABLE void endEditing() { run(m_textDidEndEditing); }

    OUTLET_VALUE(QString, text, setText) = QStringLiteral("");
    // The inner field is drawn on dark grey with its text at the left.
    OUTLET_VALUE(bool, darkField, setDarkField) = false;
    // The inner field is drawn without a ground of its own, unless it is dark.
    OUTLET_VALUE(bool, clearField, setClearField) = false;
    OUTLET_VALUE(bool, showsCancelButton, setShowsCancelButton) = false;
    // The image of the button that empties the field, shown while there is a text. An empty name: no button.
    OUTLET_VALUE(QString, clearIcon, setClearIcon) = QStringLiteral("");

    // A copy: the action may end the screen that owns this bar.
    void run(const Action &action)
    {
        if (const Action copy = action)
            copy(*this);
    }
    Action m_searchButtonClicked;
    Action m_cancelButtonClicked;
    Action m_textDidBeginEditing;
    Action m_textDidEndEditing;
};

} // namespace orvel
