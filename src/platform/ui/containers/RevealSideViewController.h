#pragma once

#include "platform/ui/containers/ViewController.h"

namespace orvel {

// A centre screen with a panel at its left that can be pushed open over it. The panel's screen is kept while
// it is closed; opening or closing the panel does not make the centre disappear.
class RevealSideViewController : public orvel::ViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are made by name in C++")
    Q_PROPERTY(orvel::ViewController *centerController READ centerController NOTIFY centerControllerChanged)
    Q_PROPERTY(orvel::ViewController *leftController READ leftController NOTIFY leftControllerChanged)
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY isOpenChanged)
    Q_PROPERTY(bool animated READ isAnimated NOTIFY isOpenChanged)
    Q_PROPERTY(bool panOpens READ panOpens NOTIFY panOpensChanged)
public:
    enum class Side { Left = 2 };
    // Where a pan opens the closed panel; values add up.
    enum PanInteraction { PanNone = 0, PanNavigationBar = 2, PanContent = 4 };

    explicit RevealSideViewController(std::shared_ptr<ViewController> center);
    ~RevealSideViewController() override;

    ViewController *centerController() const { return m_center.get(); }
    ViewController *leftController() const { return m_left.get(); }
    bool isOpen() const { return m_open; }
    bool isAnimated() const { return m_animated; }
    bool panOpens() const { return (m_panInteractionsWhenClosed & PanContent) != 0; }

    // Makes `controller` the side's screen and loads it, without showing it. A screen of the same class that
    // is there already stays, and `controller` is dropped: every screen preloads the menu, and the first menu
    // is kept, also while one of its own rows makes a new screen.
    void preloadViewController(const std::shared_ptr<ViewController> &controller, Side side);
    // Brings the side's screen back into view. No effect without one.
    void pushOldViewControllerOnDirection(Side side, bool animated);
    // Replaces the centre (which disappears and is released) and closes the panel.
    void popViewControllerWithNewCenterController(const std::shared_ptr<ViewController> &center,
                                                  bool animated);
    // Layouts call both when a pan, a tap on the centre's edge or a key asks for it.
    Q_INVOKABLE void close(bool animated);
    Q_INVOKABLE void open(bool animated);

    void setDirectionsToShowBounce(int directions) { m_directionsToShowBounce = directions; }
    int directionsToShowBounce() const { return m_directionsToShowBounce; }
    void setPanInteractionsWhenClosed(int interactions);

Q_SIGNALS:
    void centerControllerChanged();
    void leftControllerChanged();
    void isOpenChanged();
    void panOpensChanged();

protected:
    void viewDidLoad() override;
    void viewWillAppear() override;
    void viewDidDisappear() override;

private:
    void setOpen(bool open, bool animated);

    std::shared_ptr<ViewController> m_center;
    std::shared_ptr<ViewController> m_left;
    bool m_open = false;
    bool m_animated = false;
    int m_directionsToShowBounce = 1;
    int m_panInteractionsWhenClosed = PanNavigationBar | PanContent;
};

} // namespace orvel
