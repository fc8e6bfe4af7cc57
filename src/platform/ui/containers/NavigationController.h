#pragma once

#include "platform/ui/containers/ScreenStack.h"

namespace orvel {

// A stack of screens of which the top one is shown.
class NavigationController : public orvel::ViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are made by name in C++")
    Q_PROPERTY(orvel::ScreenStack *screens READ screens CONSTANT)
    Q_PROPERTY(bool navigationBarHidden READ isNavigationBarHidden NOTIFY navigationBarHiddenChanged)
public:
    explicit NavigationController(std::shared_ptr<ViewController> root);

    ViewController *topViewController() const { return m_screens.top().get(); }
    ScreenStack *screens() { return &m_screens; }
    void pushViewController(const std::shared_ptr<ViewController> &controller, bool animated);
    // No effect on the root.
    Q_INVOKABLE void popViewController(bool animated);

    bool isNavigationBarHidden() const { return m_navigationBarHidden; }
    void setNavigationBarHidden(bool hidden);

Q_SIGNALS:
    void navigationBarHiddenChanged();

protected:
    void viewDidLoad() override;
    void viewWillAppear() override;
    void viewDidDisappear() override;

private:
    ScreenStack m_screens;
    bool m_navigationBarHidden = false;
};

} // namespace orvel
