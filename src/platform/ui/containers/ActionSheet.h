#pragma once

#include "platform/ui/containers/Question.h"

#include <QStringList>

namespace orvel {

class ActionSheet;

using ActionSheetDelegate = QuestionDelegate<ActionSheet>;

// A choice that slides in over the window. Window::showActionSheet shows it. Buttons are numbered in display
// order, the cancel button last.
class ActionSheet : public orvel::Question
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Sheets are shown from C++")
    Q_PROPERTY(QStringList otherButtons MEMBER m_otherButtons CONSTANT)
    Q_PROPERTY(QString cancelButton MEMBER m_cancelButton CONSTANT)
    Q_PROPERTY(int cancelButtonIndex READ cancelButtonIndex CONSTANT)
public:
    // Escape, Back and a tap beside the sheet choose the cancel button.
    ActionSheet(const QString &title, const QStringList &otherButtons, const QString &cancelButton,
                std::weak_ptr<ActionSheetDelegate> delegate)
        : Question(*this, title, std::move(delegate))
        , m_otherButtons(otherButtons)
        , m_cancelButton(cancelButton)
    {
    }

    const QStringList &otherButtons() const { return m_otherButtons; }
    int cancelButtonIndex() const { return int(m_otherButtons.size()); }

private:
    QStringList m_otherButtons;
    QString m_cancelButton;
};

} // namespace orvel
