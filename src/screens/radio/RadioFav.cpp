#include "screens/radio/RadioFav.h"

#include "app/AppDelegate.h"
#include "app/FavouriteStore.h"
#include "app/GLOB.h"
#include "platform/foundation/FormatText.h"
#include "screens/radio/RadioRows.h"
#include "screens/radio/cellCustomRadio2.h"

namespace orvel {

void RadioFav::viewDidLoad()
{
    tableCont.registerCell(QStringLiteral("cell"), [] { return std::make_shared<cellCustomRadio2>(); });
    tableCont.setDataSource(shared(this));
    tableCont.setDelegate(shared(this));
    bplay.setTarget([this](Button &) { function_PlayPause(); });
    viewHideShow.setHidden(true);
    lblTitle.setText(strTitle);
    m_array = GLOB::glob_favArray().value_or(std::vector<JsonValue>());
    tableCont.reloadData();
}

void RadioFav::viewDidAppear() { setDataRadio(); }

const JsonValue *RadioFav::radioAt(int row) const
{
    return row >= 0 && row < int(m_array.size()) ? &m_array[std::size_t(row)] : nullptr;
}

int RadioFav::numberOfRowsInSection(TableView &, int) { return int(m_array.size()); }

double RadioFav::heightForRowAtIndexPath(TableView &, IndexPath) { return radioRowHeight; }

std::shared_ptr<TableViewCell> RadioFav::cellForRowAtIndexPath(TableView &tableView, IndexPath indexPath)
{
    const auto cell = std::static_pointer_cast<cellCustomRadio2>(
        tableView.dequeueReusableCellWithIdentifier(QStringLiteral("cell")));
    if (const JsonValue *const radio = radioAt(indexPath.row)) {
        m_dict = *radio;
        cell->showRadio(m_dict, indexPath.row, [this](Button &sender) { functionAddFav(sender); });
    }
    return cell;
}

void RadioFav::didSelectRowAtIndexPath(TableView &, IndexPath indexPath)
{
    const JsonValue *const radio = radioAt(indexPath.row);
    if (!radio)
        return;
    AppDelegate &delegate = AppDelegate::shared();
    delegate.url = (*radio)["flux_aac"].text();
    delegate.radio_play();

    bl1.setText((*radio)["title"].text());
    bl2.setText(QStringLiteral(""));
    setImages(bplay, QStringLiteral("mstop.png"));

    delegate.gl3 = bl1.text();
    // The pictures are those of the row built last, whichever was chosen.
    delegate.gurl1 = logoPath(m_dict);
    delegate.gurl2 = picturePath(m_dict);
    delegate.intPlay = 1;
    loadBarPictures();
}

void RadioFav::setDataRadio()
{
    const auto &radio = AppDelegate::shared().radio();
    if (!radio)
        return;
    bl1.setText(formatText(AppDelegate::shared().gl3));
    bl2.setText(QStringLiteral(""));
    loadBarPictures();
    showPlaying(radio->isPlaying());
}

void RadioFav::showPlaying(bool isPlaying)
{
    bplay.setTag(isPlaying ? 1 : 0);
    setImages(bplay, isPlaying ? QStringLiteral("mstop.png") : QStringLiteral("mplay.png"));
}

void RadioFav::loadBarPictures()
{
    // The stream's own address makes no picture: the logo's place stays empty.
    bimg.setImageWithProgressIndicatorAndURL(AppDelegate::shared().url, bimg.frame().center());
    bimgsinger.setImageWithProgressIndicatorAndURL(AppDelegate::shared().gurl2, bimgsinger.frame().center());
    viewHideShow.setHidden(false);
}

void RadioFav::function_PlayPause()
{
    AppDelegate &delegate = AppDelegate::shared();
    const bool pauses = bplay.tag() != 0;
    if (const auto &radio = delegate.radio())
        pauses ? radio->pause() : radio->play();
    if (pauses)
        delegate.intPlay = -1;
    showPlaying(!pauses);
}

void RadioFav::functionAddFav(const Button &sender)
{
    if (!mayChangeFavourites(QStringLiteral("You must login before do unfavriout"), *this))
        return;
    if (const JsonValue *const radio = radioAt(sender.tag()))
        askToUnfavourite(*radio, shared(this), sender.tag());
}

void RadioFav::clickedButtonAtIndex(AlertView &alertView, int buttonIndex)
{
    const JsonValue *const radio = radioAt(alertView.tag());
    if (buttonIndex != unfavouriteButton || !radio)
        return;
    GLOB::glob_ShowHud();
    FavouriteStore().remove((*radio)["id"].integerValue());
    m_array.erase(m_array.begin() + alertView.tag());
    tableCont.reloadData();
    GLOB::glob_HideHud();
}

void RadioFav::acctionMenu() { backToMenu(); }

} // namespace orvel
