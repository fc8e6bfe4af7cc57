#pragma once

#include <QObject>
#include <QQmlEngine>
#include <QString>
#include <functional>
#include <memory>

namespace orvel {

class ViewController;

// Shows screens full-screen over everything else.
class ScreenPresenter
{
public:
    virtual ~ScreenPresenter() = default;
    virtual void present(std::shared_ptr<ViewController> controller, bool animated) = 0;
    virtual void dismissFrontViewController(bool animated) = 0;

protected:
    // Sets the one that all screens use; nullptr for none.
    static void setPresenter(ScreenPresenter *presenter) { current = presenter; }

private:
    friend class ViewController;
    static inline ScreenPresenter *current = nullptr;
};

// A screen: it decides, its layout draws. Screens are shared pointers without a parent; whoever shows one
// keeps it until its layout is gone. Main thread.
class ViewController : public QObject, public std::enable_shared_from_this<ViewController>
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are made by name in C++")
    Q_PROPERTY(QString layoutName READ layoutName CONSTANT)
public:
    ViewController();
    ~ViewController() override;

    // The name of the layout that draws the screen: the class's own name.
    virtual QString layoutName() const;

    // Called by containers. The first appearance loads the screen (viewDidLoad) before it appears.
    void loadViewIfNeeded();
    void appear();
    void disappear();
    bool isViewLoaded() const { return m_loaded; }
    bool isVisible() const { return m_visible; }

    // Shows `controller` full-screen over everything else of the window; this screen disappears meanwhile.
    void presentViewController(std::shared_ptr<ViewController> controller, bool animated);
    // Takes the screen away that was presented last, by anybody.
    Q_INVOKABLE void dismissViewController(bool animated);

    // Takes the keyboard from the screen's field that has it.
    void endEditing() { Q_EMIT editingShouldEnd(); }

Q_SIGNALS:
    // To the layout.
    void editingShouldEnd();

protected:
    virtual void viewDidLoad() {}
    virtual void viewWillAppear() {}
    virtual void viewDidAppear() {}
    virtual void viewDidDisappear() {}

    // Keeps the screen alive until `function` has run, `seconds` from now.
    void performAfterDelay(double seconds, std::function<void()> function);
    // The calling screen as a shared pointer of its own type.
    template<class Controller>
    std::shared_ptr<Controller> shared(Controller *)
    {
        return std::static_pointer_cast<Controller>(shared_from_this());
    }

private:
    bool m_loaded = false;
    bool m_visible = false;
};

} // namespace orvel
