#pragma once

#include "platform/ui/containers/ViewController.h"

#include <vector>

namespace orvel {

// Screens one over the other, of which a layout shows the top one. Keeps them alive; its owner calls their
// appear() and disappear(). Main thread.
class ScreenStack : public QObject
{
    Q_OBJECT
    QML_ANONYMOUS
public:
    // `bottom` may be nullptr: nothing is shown then until a screen is pushed.
    explicit ScreenStack(std::shared_ptr<ViewController> bottom = nullptr);

    // From the bottom to the top; never empty.
    const std::vector<std::shared_ptr<ViewController>> &screens() const { return m_screens; }
    const std::shared_ptr<ViewController> &bottom() const { return m_screens.front(); }
    const std::shared_ptr<ViewController> &top() const { return m_screens.back(); }
    bool hasOnlyBottom() const { return m_screens.size() == 1; }
    bool contains(const std::shared_ptr<ViewController> &screen) const;

    void setBottom(std::shared_ptr<ViewController> bottom);
    void push(std::shared_ptr<ViewController> screen, bool animated);
    // Returns the screen that was the top. The bottom must not be popped.
    std::shared_ptr<ViewController> pop(bool animated);

Q_SIGNALS:
    // `animated`: the top screen slides in, or the one that was the top slides out.
    void changed(bool animated);

private:
    std::vector<std::shared_ptr<ViewController>> m_screens;
};

} // namespace orvel
