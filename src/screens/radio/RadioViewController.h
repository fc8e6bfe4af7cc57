#pragma once

#include "api/PostData.h"
#include "app/ShareData.h"
#include "audio/probe/MetadataReading.h"
#include "platform/ui/containers/AlertView.h"
#include "platform/ui/containers/ViewController.h"
#include "platform/ui/outlets/Button.h"
#include "platform/ui/outlets/ImageView.h"
#include "platform/ui/outlets/Label.h"
#include "platform/ui/outlets/Outlet.h"
#include "platform/ui/table/TableView.h"

#include <vector>

namespace orvel {

// The screen the application opens on: the station's web radios under a large header that shows what plays
// now, with a compact bar in the header's stead once it has scrolled away.
class RadioViewController : public orvel::ViewController,
                            public PostDataDelegate,
                            public TableViewDataSource,
                            public TableViewDelegate,
                            public AlertViewDelegate
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
    // Fills header and bar with what the application's player holds, playing or paused. No effect without a
    // player.
    void setDataRadio();
    void function_PlayPause();
    void functionsongtitle(const QString &object);
    // Probes the radio after `intTitle` for the title it plays, and so on from each probe's completion; two
    // minutes after the last but one the round begins anew. Each list that arrives starts a chain of its own,
    // which goes on while its probes are completed and keeps the screen alive by its probe or its pending
    // call.
    void fire(qint32 intTitle = -1);
    void functionAddFav(Button &sender);
    Q_INVOKABLE void acctionMenu();
    Q_INVOKABLE void acctionFacebook();
    Q_INVOKABLE void acctionTwitter();
    Q_INVOKABLE void acctionEmail();
    void acctionGoogle() {}
    void acctionLike() {}
    // The contact sheet in every screen's numbering. The screen's one contact button is acctionEmail's.
    void ShowMessage() { m_contactSheet->ShowMessage(*this); }

    int numberOfSectionsInTableView(TableView &tableView) override;
    int numberOfRowsInSection(TableView &tableView, int section) override;
    std::shared_ptr<TableViewCell> cellForRowAtIndexPath(TableView &tableView, IndexPath indexPath) override;
    double heightForRowAtIndexPath(TableView &tableView, IndexPath indexPath) override;
    double heightForHeaderInSection(TableView &tableView, int section) override;
    std::shared_ptr<View> viewForHeaderInSection(TableView &tableView, int section) override;
    void didSelectRowAtIndexPath(TableView &tableView, IndexPath indexPath) override;
    void scrollViewDidScroll(TableView &tableView) override;
    void clickedButtonAtIndex(AlertView &alertView, int buttonIndex) override;

protected:
    void viewDidLoad() override;
    void viewDidDisappear() override;

private:
    JsonValue entryAt(qsizetype row) const;
    void setInEntry(qsizetype row, const QString &key, const QString &value);
    void playEntry(const JsonValue &entry);
    void showPlaying(bool isPlaying);
    void probeTitle(int row);
    void titleWasProbed(int row, const std::optional<MetadataDictionary> &metadata);
    void callTwiter();

    std::vector<JsonValue> m_array; // the list, in server order
    QString m_strURL;               // the media base URL
    ShareData m_shareData;
    const std::shared_ptr<ContactSheet> m_contactSheet = ContactSheet::make();
};

} // namespace orvel
