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
    if (controller == m_root)
        return;
    const std::shared_ptr<ViewController> old = std::exchange(m_root, std::move(controller));
    showFrontScreen();
    Q_EMIT rootViewControllerChanged();
    if (old)
        old->disappear();
}

void Window::makeKeyAndVisible()
{
    theKeyWindow = this;
    setPresenter(this);
    showFrontScreen();
}

void Window::present(std::shared_ptr<ViewController> controller)
{
    if (!controller || controller == m_root ||
        std::ranges::find(m_presented, controller) != m_presented.end())
        return;
    controller->loadViewIfNeeded();
    const std::shared_ptr<ViewController> covered = frontScreen();
    m_presented.push_back(std::move(controller));
    showFrontScreen();
    Q_EMIT presentedViewControllerChanged();
    if (covered && covered != frontScreen())
        covered->disappear();
}

void Window::dismissFrontViewController()
{
    if (m_presented.empty())
        return;
    const std::shared_ptr<ViewController> dismissed = std::move(m_presented.back());
    m_presented.pop_back();
    showFrontScreen();
    Q_EMIT presentedViewControllerChanged();
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

std::shared_ptr<ViewController> Window::frontScreen() const
{
    return m_presented.empty() ? m_root : m_presented.back();
}

void Window::showFrontScreen()
{
    if (const std::shared_ptr<ViewController> front = frontScreen(); front && theKeyWindow == this)
        front->appear();
}

} // namespace orvel
