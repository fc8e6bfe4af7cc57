#pragma once

#include <QObject>
#include <QQmlEngine>
#include <QStringList>
#include <memory>

namespace orvel {

class ActionSheet;

class ActionSheetDelegate
{
public:
    virtual ~ActionSheetDelegate() = default;
    virtual void clickedButtonAtIndex(ActionSheet &actionSheet, int buttonIndex) = 0;
};

// A choice that slides in over the window. Window::showActionSheet shows it. Buttons are numbered in display
// order, the cancel button last. Main thread.
class ActionSheet : public QObject, public std::enable_shared_from_this<ActionSheet>
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Sheets are shown from C++")
    Q_PROPERTY(QString title MEMBER m_title CONSTANT)
    Q_PROPERTY(QStringList otherButtons MEMBER m_otherButtons CONSTANT)
    Q_PROPERTY(QString cancelButton MEMBER m_cancelButton CONSTANT)
    Q_PROPERTY(int cancelButtonIndex READ cancelButtonIndex CONSTANT)
public:
    // The delegate is not kept alive. Escape, Back and a tap beside the sheet choose the cancel button.
    ActionSheet(const QString &title, const QStringList &otherButtons, const QString &cancelButton,
                std::weak_ptr<ActionSheetDelegate> delegate);

    const QStringList &otherButtons() const { return m_otherButtons; }
    int cancelButtonIndex() const { return int(m_otherButtons.size()); }

    // Takes the sheet away, then tells the delegate. A second click does nothing.
    Q_INVOKABLE void click(int buttonIndex);

Q_SIGNALS:
    // It was clicked and is to go.
    void clicked();

private:
    QString m_title;
    QStringList m_otherButtons;
    QString m_cancelButton;
    std::weak_ptr<ActionSheetDelegate> m_delegate;
    bool m_clicked = false;
};

} // namespace orvel
