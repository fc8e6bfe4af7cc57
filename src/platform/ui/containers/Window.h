#pragma once

#include "platform/ui/containers/ActionSheet.h"
#include "platform/ui/containers/AlertView.h"
#include "platform/ui/containers/ScreenStack.h"

#include <vector>

namespace orvel {

// What the application's only window shows, from back to front: the root screen, the screens presented over
// it, the alerts and action sheets in the order they came. The progress overlay stands over all of it. There
// is one window at a time; the shell draws it. Main thread.
class Window : public QObject, public ScreenPresenter
{
    Q_OBJECT
    QML_NAMED_ELEMENT(WindowOutlet)
    QML_UNCREATABLE("The window is made by the application")
    // The root screen and those presented over it.
    Q_PROPERTY(orvel::ScreenStack *screens READ screens CONSTANT)
    Q_PROPERTY(orvel::AlertView *alert READ alert NOTIFY frontQuestionChanged)
    Q_PROPERTY(orvel::ActionSheet *actionSheet READ actionSheet NOTIFY frontQuestionChanged)
public:
    Window();
    ~Window() override;
    // The window that alerts and presented screens go to; nullptr before there is one.
    static Window *keyWindow();

    void setRootViewController(std::shared_ptr<ViewController> controller);
    // Becomes the key window and lets its root appear.
    void makeKeyAndVisible();

    ViewController *rootViewController() const { return m_screens.bottom().get(); }
    // The front one; nullptr when there is none.
    ViewController *presentedViewController() const
    {
        return m_screens.hasOnlyBottom() ? nullptr : m_screens.top().get();
    }
    ScreenStack *screens() { return &m_screens; }
    // The last shown of both, when it is one.
    AlertView *alert() const { return frontQuestion<AlertView>(); }
    ActionSheet *actionSheet() const { return frontQuestion<ActionSheet>(); }

    // Shows an alert in the key window, in front of those already there.
    static std::shared_ptr<AlertView> showAlert(const QString &title, const QString &message,
                                                const QStringList &buttons,
                                                std::weak_ptr<AlertViewDelegate> delegate = {}, int tag = 0);
    // Slides an action sheet into the key window, in front of those and of the alerts already there.
    static std::shared_ptr<ActionSheet> showActionSheet(const QString &title, const QStringList &otherButtons,
                                                        const QString &cancelButton,
                                                        std::weak_ptr<ActionSheetDelegate> delegate);

    void present(std::shared_ptr<ViewController> controller, bool animated) override;
    void dismissFrontViewController(bool animated) override;

Q_SIGNALS:
    void frontQuestionChanged();

private:
    static void ask(const std::shared_ptr<Question> &question);
    // Returns nullptr when there is none, or one of the other kind.
    template<class Kind>
    Kind *frontQuestion() const
    {
        return m_questions.empty() ? nullptr : qobject_cast<Kind *>(m_questions.back().get());
    }
    void showFrontScreen();

    ScreenStack m_screens;
    std::vector<std::shared_ptr<Question>> m_questions; // the last one in front
};

} // namespace orvel
