#pragma once

#include "app/ShareData.h"
#include "platform/ui/containers/AlertView.h"
#include "screens/base/ListScreen.h"
#include "screens/radio/CompactBar.h"
#include "screens/radio/NowPlayingHeader.h"
#include "screens/radio/TitleProbes.h"

namespace orvel {

// The screen the application opens on: the station's web radios under a header of what plays now. A compact
// bar stands in for the header once that has scrolled away.
class RadioViewController : public orvel::ListScreen, public AlertViewDelegate, public TitledRadios
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are made by name in C++")
    // Hidden while there is no radio to show in header and bar.
    OUTLET(View, viewNowPlaying);
    OUTLET(NowPlayingHeader, viewHeader);
    OUTLET(CompactBar, viewHideShow);

public:
    RadioViewController();
    ~RadioViewController() override;

    void functionGetData();
    void PostSuccess(const JsonValue &response) override;
    void PostFail(const QString &message) override;

    void setDataRadioFirstObject();
    // Fills header and bar with what the application's player holds, playing or paused. No effect without a
    // player.
    void setDataRadio();
    void function_PlayPause();
    // Shows the live title. `object` is that of AppDelegate::songTitleNotification.
    void functionsongtitle(const QString &object);
    void functionAddFav(Button &sender);
    Q_INVOKABLE void acctionFacebook();
    Q_INVOKABLE void acctionTwitter();
    // Shows the contact sheet of the screen's one contact button.
    // Deliberate: its numbering is shifted (ContactSheetTest.EachNumberingDoesWhatItsTableSays).
    Q_INVOKABLE void acctionEmail();
    void acctionGoogle() {}
    void acctionLike() {}

    double heightForRowAtIndexPath(TableView &tableView, IndexPath indexPath) override;
    double heightForHeaderInSection(TableView &tableView, int section) override;
    std::shared_ptr<View> viewForHeaderInSection(TableView &tableView, int section) override;
    void scrollViewDidScroll(TableView &tableView) override;
    void clickedButtonAtIndex(AlertView &alertView, int buttonIndex) override;

    int numberOfRadios() const override;
    QString streamOf(int row) const override;
    void showTitle(int row, const QString &title) override;

protected:
    void viewDidLoad() override;
    void viewDidDisappear() override;
    std::vector<JsonValue> entriesOf(const JsonValue &response) override;
    std::shared_ptr<TableViewCell> cellFor(const JsonValue &radio, int row) override;
    void didSelect(const JsonValue &radio, int row) override;

private:
    void setInEntry(int row, const QString &key, const QString &value);
    void showPictures(const QString &picture, const QString &logo, const QString &barLogo);
    void setPlaying(bool isPlaying);
    void callTwiter();

    QString m_strURL; // the media base URL of the last answer
    ShareData m_shareData;
};

} // namespace orvel
