#pragma once

#include "platform/ui/containers/ViewController.h"

#include <vector>

namespace orvel {

// A stack of screens of which the top one is shown.
class NavigationController : public orvel::ViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are made by name in C++")
    Q_PROPERTY(
        orvel::ViewController *topViewController READ topViewController NOTIFY topViewControllerChanged)
    Q_PROPERTY(bool navigationBarHidden READ isNavigationBarHidden NOTIFY navigationBarHiddenChanged)
public:
    explicit NavigationController(std::shared_ptr<ViewController> root);

    ViewController *topViewController() const { return m_stack.back().get(); }
    void pushViewController(const std::shared_ptr<ViewController> &controller, bool animated);
    // The root stays.
    Q_INVOKABLE void popViewController(bool animated);

    bool isNavigationBarHidden() const { return m_navigationBarHidden; }
    void setNavigationBarHidden(bool hidden);

Q_SIGNALS:
    void topViewControllerChanged();
    void navigationBarHiddenChanged();

protected:
    void viewDidLoad() override;
    void viewWillAppear() override;
    void viewDidDisappear() override;

private:
    std::vector<std::shared_ptr<ViewController>> m_stack;
    bool m_navigationBarHidden = false;
};

} // namespace orvel
