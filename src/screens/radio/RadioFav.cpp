#include "screens/radio/RadioFav.h"

#include "app/AppDelegate.h"
#include "app/FavouriteStore.h"
#include "app/GLOB.h"
#include "app/WebRadioEntry.h"
#include "platform/foundation/FormatText.h"
#include "screens/radio/FavouriteQuestions.h"
#include "screens/radio/cellCustomRadio2.h"

namespace orvel {

void RadioFav::viewDidLoad()
{
    viewHideShow.bplay.setTarget([this](Button &) { function_PlayPause(); });
    lblTitle.setText(strTitle);
    m_array = GLOB::glob_favArray().value_or(std::vector<JsonValue>());
    ListScreen::viewDidLoad();
}

void RadioFav::viewDidAppear() { setDataRadio(); }

double RadioFav::heightForRowAtIndexPath(TableView &, IndexPath) { return RadioCell::height; }

std::shared_ptr<TableViewCell> RadioFav::cellFor(const JsonValue &radio, int row)
{
    m_dict = radio;
    const auto cell = std::make_shared<cellCustomRadio2>();
    cell->showRadio(radio, row, [this](Button &sender) { functionAddFav(sender); });
    return cell;
}

void RadioFav::didSelect(const JsonValue &radio, int)
{
    AppDelegate &delegate = AppDelegate::shared();
    delegate.url = radio[WebRadioEntry::flux_aac].text();
    delegate.radio_play();

    delegate.gl3 = radio[WebRadioEntry::title].text();
    // Deliberate: the pictures are those of the row built last, whichever was chosen
    // (FavouritesTest.ATapPlaysTheRowWithThePicturesOfTheRowBuiltLast).
    delegate.gurl1 = WebRadioEntry::logoPath(m_dict);
    delegate.gurl2 = WebRadioEntry::picturePath(m_dict);
    delegate.intPlay = 1;
    showBar(delegate.gl3);
    // Deliberate: the button's tag stays, so that a first press may play what plays already
    // (FavouritesTest.TheBarsFirstPressAfterATapPlays).
    viewHideShow.setPlayImage(true);
}

void RadioFav::setDataRadio()
{
    const AppDelegate &delegate = AppDelegate::shared();
    if (!delegate.radio())
        return;
    showBar(formatText(delegate.gl3));
    viewHideShow.setPlaying(delegate.radio()->isPlaying());
}

void RadioFav::showBar(const QString &title)
{
    CompactBar &bar = viewHideShow;
    bar.bl1.setText(title);
    bar.bl2.setText(QStringLiteral(""));
    // Deliberate: the stream's address makes no picture, so that the logo stays empty
    // (StationScreensTest.ShowEachPictureInItsPlace).
    bar.bimg.setImageWithProgressIndicatorAndURL(AppDelegate::shared().url, bar.bimg.frame().center());
    bar.bimgsinger.setImageWithProgressIndicatorAndURL(AppDelegate::shared().gurl2,
                                                       bar.bimgsinger.frame().center());
    bar.setHidden(false);
}

void RadioFav::function_PlayPause()
{
    AppDelegate &delegate = AppDelegate::shared();
    const bool pauses = viewHideShow.bplay.tag() != 0;
    if (const auto &radio = delegate.radio())
        pauses ? radio->pause() : radio->play();
    if (pauses)
        delegate.intPlay = -1;
    viewHideShow.setPlaying(!pauses);
}

void RadioFav::functionAddFav(const Button &sender)
{
    if (mayChangeFavourites(QStringLiteral("You must login before do unfavriout"), *this))
        askToUnfavourite(entryAt(sender.tag()), shared(this), sender.tag());
}

void RadioFav::clickedButtonAtIndex(AlertView &alertView, int buttonIndex)
{
    const int row = alertView.tag();
    const JsonValue radio = entryAt(row);
    if (buttonIndex != unfavouriteButton || radio.isAbsent())
        return;
    GLOB::glob_ShowHud();
    FavouriteStore().remove(radio[WebRadioEntry::id].integerValue());
    m_array.erase(m_array.begin() + row);
    tableCont.reloadData();
    GLOB::glob_HideHud();
}

} // namespace orvel
