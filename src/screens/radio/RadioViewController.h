#pragma once

#include "api/PostData.h"
#include "platform/ui/Button.h"
#include "platform/ui/ImageView.h"
#include "platform/ui/Label.h"
#include "platform/ui/Outlet.h"
#include "platform/ui/TableView.h"
#include "platform/ui/ViewController.h"

#include <vector>

namespace orvel {

// The screen the application opens on: the station's web radios under a large header that shows what plays
// now, with a compact bar in the header's stead once it has scrolled away.
class RadioViewController : public orvel::ViewController,
                            public PostDataDelegate,
                            public TableViewDataSource,
                            public TableViewDelegate
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are made by name in C++")
    Q_PROPERTY(QString strTitle MEMBER strTitle)
    // Hidden until a radio was chosen: what the header and the bar show.
    OUTLET(View, viewNowPlaying);
    // The header: logo, radio, description, song title, artist, large picture, play button.
    OUTLET(View, viewHeader);
    OUTLET(ImageView, himg);
    OUTLET(Label, hl1);
    OUTLET(Label, hl2);
    OUTLET(Label, hl3);
    OUTLET(Label, hl4);
    OUTLET(ImageView, himgsinger);
    OUTLET(Button, hbtnPlay);
    // The compact bar.
    OUTLET(ImageView, bimg);
    OUTLET(ImageView, bimgsinger);
    OUTLET(Label, bl1);
    OUTLET(Label, bl2);
    OUTLET(Button, bplay);
    OUTLET(View, viewHideShow);

    OUTLET(TableView, tableCont);
    OUTLET(Label, lblTitle);

public:
    RadioViewController();
    ~RadioViewController() override;

    // Given by whoever opens the screen.
    QString strTitle;

    void functionGetData();
    void PostSuccess(const JsonValue &response) override;
    void PostFail(const QString &message) override;

    void setDataRadioFirstObject();
    void setDataRadio();
    void function_PlayPause();
    void functionsongtitle(const QString &object);
    Q_INVOKABLE void acctionMenu();

    int numberOfSectionsInTableView(TableView &tableView) override;
    int numberOfRowsInSection(TableView &tableView, int section) override;
    std::shared_ptr<TableViewCell> cellForRowAtIndexPath(TableView &tableView, IndexPath indexPath) override;
    double heightForRowAtIndexPath(TableView &tableView, IndexPath indexPath) override;
    double heightForHeaderInSection(TableView &tableView, int section) override;
    QObject *viewForHeaderInSection(TableView &tableView, int section) override;
    void didSelectRowAtIndexPath(TableView &tableView, IndexPath indexPath) override;
    void scrollViewDidScroll(TableView &tableView) override;

protected:
    void viewDidLoad() override;
    void viewDidDisappear() override;

private:
    JsonValue entryAt(qsizetype row) const;
    void playEntry(const JsonValue &entry);
    void showPlaying(bool isPlaying);

    std::vector<JsonValue> m_array; // the list, in server order
    QString m_strURL;               // the media base URL
    View m_viewFooter;              // empty and clear
    QObject *viewForFooterInSection(TableView &tableView, int section) override;
};

} // namespace orvel
