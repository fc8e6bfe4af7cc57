#include "platform/ui/containers/Window.h"

#include <algorithm>

namespace orvel {

namespace {

Window *theKeyWindow = nullptr;

} // namespace

Window::Window() = default;

Window::~Window()
{
    if (theKeyWindow != this)
        return;
    theKeyWindow = nullptr;
    setPresenter(nullptr);
}

Window *Window::keyWindow() { return theKeyWindow; }

void Window::setRootViewController(std::shared_ptr<ViewController> controller)
{
    const std::shared_ptr<ViewController> old = m_screens.bottom();
    if (controller == old)
        return;
    m_screens.setBottom(std::move(controller));
    showFrontScreen();
    if (old)
        old->disappear();
}

void Window::makeKeyAndVisible()
{
    theKeyWindow = this;
    setPresenter(this);
    showFrontScreen();
}

void Window::present(std::shared_ptr<ViewController> controller, bool animated)
{
    if (!controller || m_screens.contains(controller))
        return;
    controller->loadViewIfNeeded();
    const std::shared_ptr<ViewController> covered = m_screens.top();
    m_screens.push(std::move(controller), animated);
    showFrontScreen();
    if (covered)
        covered->disappear();
}

void Window::dismissFrontViewController(bool animated)
{
    if (m_screens.hasOnlyBottom())
        return;
    const std::shared_ptr<ViewController> dismissed = m_screens.pop(animated);
    showFrontScreen();
    dismissed->disappear();
}

void Window::ask(const std::shared_ptr<Question> &question)
{
    Window *const window = theKeyWindow;
    if (!window)
        return;
    window->m_questions.push_back(question);
    connect(question.get(), &Question::clicked, window, [window, answered = question.get()] {
        std::erase_if(window->m_questions,
                      [answered](const auto &candidate) { return candidate.get() == answered; });
        Q_EMIT window->frontQuestionChanged();
    });
    Q_EMIT window->frontQuestionChanged();
}

std::shared_ptr<AlertView> Window::showAlert(const QString &title, const QString &message,
                                             const QStringList &buttons,
                                             std::weak_ptr<AlertViewDelegate> delegate, int tag)
{
    const auto alert = std::make_shared<AlertView>(title, message, buttons, std::move(delegate), tag);
    ask(alert);
    return alert;
}

std::shared_ptr<ActionSheet> Window::showActionSheet(const QString &title, const QStringList &otherButtons,
                                                     const QString &cancelButton,
                                                     std::weak_ptr<ActionSheetDelegate> delegate)
{
    const auto sheet = std::make_shared<ActionSheet>(title, otherButtons, cancelButton, std::move(delegate));
    ask(sheet);
    return sheet;
}

void Window::showFrontScreen()
{
    if (m_screens.top() && theKeyWindow == this)
        m_screens.top()->appear();
}

} // namespace orvel
