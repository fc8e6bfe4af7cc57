#pragma once

#include "platform/ui/outlets/View.h"

#include <QString>

namespace orvel {

// A text of several lines that the user edits. Layouts write the text back as it is typed.
class TextView : public orvel::View
{
    Q_OBJECT
    QML_NAMED_ELEMENT(TextViewOutlet)
    QML_UNCREATABLE("Outlets belong to their screen")
public:
    TextView() = default;

    OUTLET_VALUE(QString, text, setText) = QStringLiteral("");
};

} // namespace orvel
