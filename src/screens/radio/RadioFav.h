#pragma once

#include "platform/ui/containers/AlertView.h"
#include "screens/base/ListScreen.h"
#include "screens/radio/CompactBar.h"

namespace orvel {

// The favourite radios as they were stored when the screen loaded, over a compact bar of what plays now.
class RadioFav : public orvel::ListScreen, public AlertViewDelegate
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are made by name in C++")
    // Its second line stays empty.
    OUTLET(CompactBar, viewHideShow);

public:
    // Fills the bar with what the application's player holds, playing or paused. No effect without a player.
    void setDataRadio();
    void function_PlayPause();
    void functionAddFav(const Button &sender);

    double heightForRowAtIndexPath(TableView &tableView, IndexPath indexPath) override;
    void clickedButtonAtIndex(AlertView &alertView, int buttonIndex) override;

protected:
    void viewDidLoad() override;
    void viewDidAppear() override;
    std::shared_ptr<TableViewCell> cellFor(const JsonValue &radio, int row) override;
    void didSelect(const JsonValue &radio, int row) override;

private:
    void showBar(const QString &title);

    JsonValue m_dict; // the radio of the row built last
};

} // namespace orvel
