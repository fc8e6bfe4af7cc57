#include "screens/radio/RadioViewController.h"

#include "app/AppDelegate.h"
#include "app/FavouriteStore.h"
#include "app/GLOB.h"
#include "app/WebRadioEntry.h"
#include "platform/foundation/FormatText.h"
#include "platform/foundation/NotificationCentre.h"
#include "screens/radio/FavouriteQuestions.h"
#include "screens/radio/cellCustomRadio.h"

#include <unordered_set>

namespace orvel {

namespace {

QString emptyWhenNull(const JsonValue &value) { return value.isNull() ? QStringLiteral("") : value.text(); }

} // namespace

RadioViewController::RadioViewController() = default;

RadioViewController::~RadioViewController() { NotificationCentre::defaultCentre().removeObserver(this); }

void RadioViewController::viewDidLoad()
{
    if (const auto &container = AppDelegate::shared().revealSideViewController())
        container->preloadViewController(
            AppDelegate::shared().catalogue().screenNamed(QStringLiteral("MenuController")),
            RevealSideViewController::Side::Left);
    viewNowPlaying.setHidden(true);
    for (Button *button : {&viewHeader.hbtnPlay, &viewHideShow.bplay})
        button->setTarget([this](Button &) { function_PlayPause(); });
    setPlaying(false);
    lblTitle.setText(strTitle);
    ListScreen::viewDidLoad();
    performUnderHud(0.1, [this] { functionGetData(); });
    NotificationCentre::defaultCentre().addObserver(
        this, AppDelegate::songTitleNotification,
        [this](const Notification &notification) { functionsongtitle(notification.object.toString()); });
}

// Deliberate: what is observed is not observed again when the screen comes back
// (RadioViewControllerTest.ShowsTheLiveTitleAsTheListAllowsUntilTheFirstScreenAbove).
void RadioViewController::viewDidDisappear() { NotificationCentre::defaultCentre().removeObserver(this); }

void RadioViewController::functionGetData() { ask(QStringLiteral("webradio")); }

void RadioViewController::PostSuccess(const JsonValue &response)
{
    ListScreen::PostSuccess(response);
    setDataRadio();
    TitleProbes::start(shared(this));
}

void RadioViewController::PostFail(const QString &message)
{
    setDataRadio();
    ListScreen::PostFail(message);
}

std::vector<JsonValue> RadioViewController::entriesOf(const JsonValue &response)
{
    std::unordered_set<qint64> favourites;
    for (const JsonValue &favourite : GLOB::glob_favArray().value_or(std::vector<JsonValue>()))
        favourites.insert(favourite[WebRadioEntry::id].integerValue());
    m_strURL = response["media_url"].text();
    std::vector<JsonValue> entries = ListScreen::entriesOf(response);
    std::erase_if(entries, [](const JsonValue &entry) { return !entry.isObject(); });
    for (JsonValue &entry : entries) {
        const bool isFavourite = favourites.contains(entry[WebRadioEntry::id].integerValue());
        entry.set(WebRadioEntry::fav, isFavourite ? WebRadioEntry::favIconFull : WebRadioEntry::favIcon);
        entry.set(WebRadioEntry::songtitle, QStringLiteral(""));
        entry.set(WebRadioEntry::imageurl, m_strURL);
    }
    return entries;
}

void RadioViewController::setInEntry(int row, const QString &key, const QString &value)
{
    if (row >= 0 && row < int(m_array.size()))
        m_array[std::size_t(row)].set(key, value);
}

double RadioViewController::heightForRowAtIndexPath(TableView &, IndexPath) { return RadioCell::height; }

double RadioViewController::heightForHeaderInSection(TableView &, int) { return NowPlayingHeader::height; }

std::shared_ptr<View> RadioViewController::viewForHeaderInSection(TableView &, int)
{
    return unowned(viewHeader);
}

std::shared_ptr<TableViewCell> RadioViewController::cellFor(const JsonValue &radio, int row)
{
    const auto cell = std::make_shared<cellCustomRadio>();
    cell->showRadio(radio, row, [this](Button &sender) { functionAddFav(sender); });
    cell->lblDesc.setText(emptyWhenNull(radio[WebRadioEntry::songtitle]));
    return cell;
}

void RadioViewController::setDataRadioFirstObject() { didSelectRowAtIndexPath(tableCont, {0, 0}); }

void RadioViewController::didSelect(const JsonValue &radio, int)
{
    AppDelegate &delegate = AppDelegate::shared();
    delegate.url = radio[WebRadioEntry::flux_aac].text();
    delegate.radio_play();

    const QString picture = formatPath(m_strURL, radio[WebRadioEntry::file].text());
    const QString logo = formatPath(m_strURL, radio[WebRadioEntry::thumb_smartphone].text());
    viewHeader.hl1.setText(GLOB::glob_isNULL(radio[WebRadioEntry::title]).text());
    viewHeader.hl2.setText(emptyWhenNull(radio[WebRadioEntry::subtitle]));
    showPictures(picture, logo, logo);
    viewNowPlaying.setHidden(false);
    setPlaying(true);

    delegate.gl1 = viewHeader.hl1.text();
    delegate.gl2 = viewHeader.hl2.text();
    delegate.gurl1 = logo;
    delegate.gurl2 = picture;
    delegate.intPlay = 1;
}

void RadioViewController::setDataRadio()
{
    const AppDelegate &delegate = AppDelegate::shared();
    if (!delegate.radio())
        return;
    viewHeader.hl1.setText(formatText(delegate.gl1));
    viewHeader.hl2.setText(delegate.gl2);
    for (Label *label : {&viewHeader.hl3, &viewHideShow.bl1})
        label->setText(formatText(delegate.gl3));
    for (Label *label : {&viewHeader.hl4, &viewHideShow.bl2})
        label->setText(formatText(delegate.gl4));
    // Deliberate: the stream's address makes no picture, so that the bar's logo stays empty
    // (StationScreensTest.ShowEachPictureInItsPlace).
    showPictures(delegate.gurl2, delegate.gurl1, delegate.url);
    viewNowPlaying.setHidden(false);
    setPlaying(delegate.radio()->isPlaying());
}

void RadioViewController::showPictures(const QString &picture, const QString &logo, const QString &barLogo)
{
    const QPointF pictureCenter = viewHeader.himgsinger.frame().center();
    const QPointF logoCenter = viewHeader.himg.frame().center();
    viewHeader.himgsinger.setImageWithProgressIndicatorAndURL(picture, pictureCenter);
    viewHeader.himg.setImageWithProgressIndicatorAndURL(logo, logoCenter);
    // Deliberate: the bar takes the header's centres
    // (RadioViewControllerTest.ATapPlaysTheRowsRadio).
    viewHideShow.bimgsinger.setImageWithProgressIndicatorAndURL(picture, pictureCenter);
    viewHideShow.bimg.setImageWithProgressIndicatorAndURL(barLogo, logoCenter);
}

void RadioViewController::setPlaying(bool isPlaying)
{
    viewHeader.setPlaying(isPlaying);
    viewHideShow.setPlaying(isPlaying);
}

void RadioViewController::function_PlayPause()
{
    AppDelegate &delegate = AppDelegate::shared();
    if (!delegate.radio())
        return;
    const bool pauses = viewHeader.hbtnPlay.tag() != 0;
    if (pauses) {
        delegate.radio()->pause();
        delegate.intPlay = -1;
    } else {
        delegate.radio()->play();
    }
    setPlaying(!pauses);
}

// Deliberate: the list's length decides what is shown, and a missing artist ends everything
// (RadioViewControllerTest.ShowsTheLiveTitleAsTheListAllowsUntilTheFirstScreenAbove).
void RadioViewController::functionsongtitle(const QString &object)
{
    const QStringList parts = object.trimmed().split(QStringLiteral("&&&"));
    if (!m_array.empty()) {
        viewHeader.hl3.setText(parts[0]);
        viewHideShow.bl1.setText(parts[0]);
    }
    if (m_array.size() >= 2) {
        if (parts.size() < 2)
            return;
        viewHeader.hl4.setText(parts[1]);
        viewHideShow.bl2.setText(parts[1]);
    }
    AppDelegate::shared().gl3 = viewHideShow.bl1.text();
    AppDelegate::shared().gl4 = viewHideShow.bl2.text();
}

int RadioViewController::numberOfRadios() const { return int(m_array.size()); }

QString RadioViewController::streamOf(int row) const { return entryAt(row)[WebRadioEntry::flux_aac].text(); }

void RadioViewController::showTitle(int row, const QString &title)
{
    setInEntry(row, WebRadioEntry::songtitle, title);
    tableCont.reloadRowsAtIndexPaths({{0, row}}, TableView::RowAnimation::None);
}

void RadioViewController::functionAddFav(Button &sender)
{
    if (!mayChangeFavourites(QStringLiteral("You must login before do favriout/unfavriout"), *this))
        return;
    const int row = sender.tag();
    if (entryAt(row)[WebRadioEntry::fav].text() != WebRadioEntry::favIcon) {
        askToUnfavourite(entryAt(row), shared(this), row);
        return;
    }
    GLOB::glob_ShowHud();
    setInEntry(row, WebRadioEntry::fav, WebRadioEntry::favIconFull);
    sender.setImage(WebRadioEntry::favIconFull, ControlState::Normal);
    FavouriteStore().add(entryAt(row));
    GLOB::glob_HideHud();
}

void RadioViewController::clickedButtonAtIndex(AlertView &alertView, int buttonIndex)
{
    if (buttonIndex != unfavouriteButton)
        return;
    GLOB::glob_ShowHud();
    const int row = alertView.tag();
    FavouriteStore().remove(entryAt(row)[WebRadioEntry::id].integerValue());
    setInEntry(row, WebRadioEntry::fav, WebRadioEntry::favIcon);
    tableCont.reloadRowsAtIndexPaths({{0, row}}, TableView::RowAnimation::Fade);
    GLOB::glob_HideHud();
}

void RadioViewController::scrollViewDidScroll(TableView &tableView)
{
    viewHideShow.followHeader(viewHeader.frame().height(), tableView.contentOffset());
}

void RadioViewController::acctionFacebook()
{
    m_shareData.functionFacebook(viewHeader.hl1.text(), AppDelegate::shared().gurl2, *this);
}

void RadioViewController::acctionTwitter()
{
    performUnderHud(0.1, [this] { callTwiter(); });
}

void RadioViewController::callTwiter()
{
    m_shareData.functionTwitter(viewHeader.hl1.text(), viewHeader.himgsinger.image(),
                                AppDelegate::shared().gurl2, *this);
}

void RadioViewController::acctionEmail() { m_shareData.shairEmailOption(shared_from_this()); }

} // namespace orvel
