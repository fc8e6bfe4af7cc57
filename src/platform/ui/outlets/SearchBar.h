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

    OUTLET_ACTION(searchButtonClicked, setSearchButtonClicked);
    OUTLET_ACTION(cancelButtonClicked, setCancelButtonClicked);
    // The bar is edited while its field or one of its buttons has the keyboard.
    OUTLET_ACTION(beginEditing, setTextDidBeginEditing);
    OUTLET_ACTION(endEditing, setTextDidEndEditing);

    OUTLET_VALUE(QString, text, setText) = QStringLiteral("");
    // The inner field is drawn on dark grey with its text at the left.
    OUTLET_VALUE(bool, darkField, setDarkField) = false;
    // The inner field is drawn without a ground of its own, unless it is dark.
    OUTLET_VALUE(bool, clearField, setClearField) = false;
    OUTLET_VALUE(bool, showsCancelButton, setShowsCancelButton) = false;
    // The image of the button that empties the field, shown while there is a text. An empty name: no button.
    OUTLET_VALUE(QString, clearIcon, setClearIcon) = QStringLiteral("");
};

} // namespace orvel
