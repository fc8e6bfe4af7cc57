#pragma once

#include "api/json/JsonValue.h"
#include "app/ContactSheet.h"
#include "platform/ui/containers/AlertView.h"
#include "platform/ui/containers/ViewController.h"
#include "platform/ui/outlets/Button.h"
#include "platform/ui/outlets/ImageView.h"
#include "platform/ui/outlets/Label.h"
#include "platform/ui/outlets/Outlet.h"
#include "platform/ui/table/TableView.h"

#include <vector>

namespace orvel {

// The favourite radios as they were stored when the screen loaded, over a compact bar of what plays now.
class RadioFav : public orvel::ViewController,
                 public TableViewDataSource,
                 public TableViewDelegate,
                 public AlertViewDelegate
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are made by name in C++")
    Q_PROPERTY(QString strTitle MEMBER strTitle)
    OUTLET(TableView, tableCont);
    OUTLET(Label, lblTitle);
    // The compact bar: hidden until there is something to show in it.
    OUTLET(View, viewHideShow);
    OUTLET(ImageView, bimg);
    OUTLET(ImageView, bimgsinger);
    OUTLET(Label, bl1);
    OUTLET(Label, bl2);
    OUTLET(Button, bplay);

public:
    // Given by whoever opens the screen.
    QString strTitle;

    // Fills the bar with what the application's player holds, playing or paused. No effect without a player.
    void setDataRadio();
    void function_PlayPause();
    void functionAddFav(const Button &sender);
    Q_INVOKABLE void acctionMenu();
    Q_INVOKABLE void ShowMessage() { m_contactSheet->ShowMessage(*this); }

    int numberOfRowsInSection(TableView &tableView, int section) override;
    std::shared_ptr<TableViewCell> cellForRowAtIndexPath(TableView &tableView, IndexPath indexPath) override;
    double heightForRowAtIndexPath(TableView &tableView, IndexPath indexPath) override;
    void didSelectRowAtIndexPath(TableView &tableView, IndexPath indexPath) override;
    void clickedButtonAtIndex(AlertView &alertView, int buttonIndex) override;

protected:
    void viewDidLoad() override;
    void viewDidAppear() override;

private:
    const JsonValue *radioAt(int row) const;
    void loadBarPictures();
    void showPlaying(bool isPlaying);

    std::vector<JsonValue> m_array;
    JsonValue m_dict; // the radio of the row built last
    const std::shared_ptr<ContactSheet> m_contactSheet = ContactSheet::make();
};

} // namespace orvel
