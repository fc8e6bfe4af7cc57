#include "screens/radio/RadioViewController.h"

#include "api/ContentList.h"
#include "app/AppDelegate.h"
#include "app/FavouriteStore.h"
#include "app/GLOB.h"
#include "audio/probe/StreamMetadataGetter.h"
#include "platform/foundation/FormatText.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/MainQueue.h"
#include "platform/foundation/NotificationCentre.h"
#include "screens/radio/RadioRows.h"
#include "screens/radio/cellCustomRadio.h"

#include <unordered_set>

namespace orvel {

namespace {

constexpr double headerHeight = 352;
constexpr double secondsBetweenRounds = 120; // of title probes

// The last scroll offset seen by any list of web radios.
double lastContentOffset = 0;

QPointF centerOf(const View &view) { return view.frame().center(); }

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
    viewHideShow.setHidden(true);
    viewNowPlaying.setHidden(true);
    tableCont.registerCell(QStringLiteral("cell"), [] { return std::make_shared<cellCustomRadio>(); });
    tableCont.setDataSource(shared(this));
    tableCont.setDelegate(shared(this));
    tableCont.reloadData();
    for (Button *button : {&hbtnPlay, &bplay})
        button->setTarget([this](Button &) { function_PlayPause(); });
    showPlaying(false);
    lblTitle.setText(strTitle);
    GLOB::glob_ShowHud();
    performAfterDelay(0.1, [this] { functionGetData(); });
    NotificationCentre::defaultCentre().addObserver(
        this, AppDelegate::songTitleNotification,
        [this](const Notification &notification) { functionsongtitle(notification.object.toString()); });
}

void RadioViewController::viewDidDisappear() { NotificationCentre::defaultCentre().removeObserver(this); }

void RadioViewController::functionGetData()
{
    const auto request = std::make_shared<PostData>();
    request->setDelegate(shared(this));
    request->postGetSecondSection(QStringLiteral("webradio"));
}

void RadioViewController::PostSuccess(const JsonValue &response)
{
    std::unordered_set<qint64> favourites;
    for (const JsonValue &favourite : GLOB::glob_favArray().value_or(std::vector<JsonValue>()))
        favourites.insert(favourite["id"].integerValue());
    m_strURL = response["media_url"].text();
    for (JsonValue &entry : contentList(response)) {
        if (!entry.isObject())
            continue;
        const bool isFavourite = favourites.contains(entry["id"].integerValue());
        entry.set(QStringLiteral("fav"), isFavourite ? favIconFull : favIcon);
        entry.set(QStringLiteral("songtitle"), QStringLiteral(""));
        entry.set(QStringLiteral("imageurl"), m_strURL);
        m_array.push_back(entry);
    }
    tableCont.reloadData();
    setDataRadio();
    GLOB::glob_HideHud();
    MainQueue::async([screen = shared(this)] { screen->fire(); });
}

void RadioViewController::PostFail(const QString &message)
{
    setDataRadio();
    GLOB::glob_alert(message);
    GLOB::glob_HideHud();
}

JsonValue RadioViewController::entryAt(qsizetype row) const
{
    return row >= 0 && row < qsizetype(m_array.size()) ? m_array[std::size_t(row)] : JsonValue();
}

void RadioViewController::setInEntry(qsizetype row, const QString &key, const QString &value)
{
    if (row >= 0 && row < qsizetype(m_array.size()))
        m_array[std::size_t(row)].set(key, value);
}

int RadioViewController::numberOfSectionsInTableView(TableView &) { return 1; }

int RadioViewController::numberOfRowsInSection(TableView &, int) { return int(m_array.size()); }

double RadioViewController::heightForRowAtIndexPath(TableView &, IndexPath) { return radioRowHeight; }

double RadioViewController::heightForHeaderInSection(TableView &, int) { return headerHeight; }

std::shared_ptr<View> RadioViewController::viewForHeaderInSection(TableView &, int)
{
    return unowned(viewHeader);
}

std::shared_ptr<TableViewCell> RadioViewController::cellForRowAtIndexPath(TableView &tableView,
                                                                          IndexPath indexPath)
{
    const auto cell = std::static_pointer_cast<cellCustomRadio>(
        tableView.dequeueReusableCellWithIdentifier(QStringLiteral("cell")));
    const JsonValue entry = entryAt(indexPath.row);
    cell->showRadio(entry, indexPath.row, [this](Button &sender) { functionAddFav(sender); });
    cell->lblDesc.setText(emptyWhenNull(entry["songtitle"]));
    return cell;
}

void RadioViewController::didSelectRowAtIndexPath(TableView &, IndexPath indexPath)
{
    if (indexPath.row >= 0 && indexPath.row < int(m_array.size()))
        playEntry(m_array[std::size_t(indexPath.row)]);
}

void RadioViewController::setDataRadioFirstObject()
{
    if (!m_array.empty())
        playEntry(m_array.front());
}

void RadioViewController::playEntry(const JsonValue &entry)
{
    AppDelegate &delegate = AppDelegate::shared();
    delegate.url = entry["flux_aac"].text();
    delegate.radio_play();

    const QString picture = formatPath(m_strURL, entry["file"].text());
    const QString logo = formatPath(m_strURL, entry["thumb_smartphone"].text());
    himgsinger.setImageWithProgressIndicatorAndURL(picture, centerOf(himgsinger));
    himg.setImageWithProgressIndicatorAndURL(logo, centerOf(himg));
    hl1.setText(nameOf(entry));
    hl2.setText(emptyWhenNull(entry["subtitle"]));
    // The compact bar takes the header's centres.
    bimgsinger.setImageWithProgressIndicatorAndURL(picture, centerOf(himgsinger));
    bimg.setImageWithProgressIndicatorAndURL(logo, centerOf(himg));
    viewNowPlaying.setHidden(false);
    showPlaying(true);

    delegate.gl1 = hl1.text();
    delegate.gl2 = hl2.text();
    delegate.gurl1 = logo;
    delegate.gurl2 = picture;
    delegate.intPlay = 1;
}

void RadioViewController::setDataRadio()
{
    const AppDelegate &delegate = AppDelegate::shared();
    if (!delegate.radio())
        return;
    himg.setImageWithProgressIndicatorAndURL(delegate.gurl1, centerOf(himg));
    himgsinger.setImageWithProgressIndicatorAndURL(delegate.gurl2, centerOf(himgsinger));
    hl1.setText(formatText(delegate.gl1));
    hl2.setText(delegate.gl2);
    for (Label *label : {&hl3, &bl1})
        label->setText(formatText(delegate.gl3));
    for (Label *label : {&hl4, &bl2})
        label->setText(formatText(delegate.gl4));
    // The stream's own address makes no picture: the bar's logo stays empty here.
    bimg.setImageWithProgressIndicatorAndURL(delegate.url, centerOf(himg));
    bimgsinger.setImageWithProgressIndicatorAndURL(delegate.gurl2, centerOf(himgsinger));
    viewNowPlaying.setHidden(false);
    showPlaying(delegate.radio()->isPlaying());
}

void RadioViewController::showPlaying(bool isPlaying)
{
    hbtnPlay.setTag(isPlaying ? 1 : 0);
    bplay.setTag(isPlaying ? 1 : 0);
    setImages(hbtnPlay, isPlaying ? QStringLiteral("pstop.png") : QStringLiteral("pplayer.png"));
    setImages(bplay, isPlaying ? QStringLiteral("mstop.png") : QStringLiteral("mplay.png"));
}

void RadioViewController::function_PlayPause()
{
    AppDelegate &delegate = AppDelegate::shared();
    if (!delegate.radio())
        return;
    if (hbtnPlay.tag() != 0) {
        delegate.radio()->pause();
        showPlaying(false);
        delegate.intPlay = -1;
    } else {
        delegate.radio()->play();
        showPlaying(true);
    }
}

void RadioViewController::functionsongtitle(const QString &object)
{
    const QStringList parts = object.trimmed().split(QStringLiteral("&&&"));
    if (!m_array.empty()) {
        hl3.setText(parts[0]);
        bl1.setText(parts[0]);
    }
    if (m_array.size() >= 2) {
        // The artist is asked for whether or not it is there; without it nothing more happens.
        if (parts.size() < 2)
            return;
        hl4.setText(parts[1]);
        bl2.setText(parts[1]);
    }
    AppDelegate::shared().gl3 = bl1.text();
    AppDelegate::shared().gl4 = bl2.text();
}

void RadioViewController::fire(qint32 intTitle)
{
    ++intTitle;
    // The last radio of the list is never asked.
    if (intTitle + 1 < int(m_array.size()))
        probeTitle(intTitle);
    else
        performAfterDelay(secondsBetweenRounds, [this] { fire(); });
}

void RadioViewController::probeTitle(int row)
{
    const auto done = [screen = shared(this), row](const std::optional<MetadataDictionary> &metadata) {
        screen->titleWasProbed(row, metadata);
    };
    const std::optional<Url> url = Url::fromText(entryAt(row)["flux_aac"].text());
    if (!url) {
        MainQueue::async([done] { done({}); });
        return;
    }
    // Its own handler keeps the probe, until it was called or the stream has ended without a title.
    const auto probe = std::make_shared<StreamMetadataGetter>(QStringLiteral("My Queue"));
    probe->getMetadataFromUrl(
        *url, [probe, done](const auto &metadata, const auto &, const auto &) { done(metadata); });
}

void RadioViewController::titleWasProbed(int row, const std::optional<MetadataDictionary> &metadata)
{
    const MetadataDictionary fields = metadata.value_or(MetadataDictionary());
    setInEntry(row, QStringLiteral("songtitle"),
               fields.value(QStringLiteral("StreamTitle"), QStringLiteral("")));
    tableCont.reloadRowsAtIndexPaths({{0, row}}, TableView::RowAnimation::None);
    fire(row);
    qCInfo(logApp) << fields;
}

void RadioViewController::functionAddFav(Button &sender)
{
    if (!mayChangeFavourites(QStringLiteral("You must login before do favriout/unfavriout"), *this))
        return;
    const int row = sender.tag();
    if (entryAt(row)["fav"].text() != favIcon) {
        askToUnfavourite(entryAt(row), shared(this), row);
        return;
    }
    GLOB::glob_ShowHud();
    setInEntry(row, QStringLiteral("fav"), favIconFull);
    sender.setImage(favIconFull, ControlState::Normal);
    FavouriteStore().add(entryAt(row));
    GLOB::glob_HideHud();
}

void RadioViewController::clickedButtonAtIndex(AlertView &alertView, int buttonIndex)
{
    if (buttonIndex != unfavouriteButton)
        return;
    GLOB::glob_ShowHud();
    const int row = alertView.tag();
    FavouriteStore().remove(entryAt(row)["id"].integerValue());
    setInEntry(row, QStringLiteral("fav"), favIcon);
    tableCont.reloadRowsAtIndexPaths({{0, row}}, TableView::RowAnimation::Fade);
    GLOB::glob_HideHud();
}

void RadioViewController::scrollViewDidScroll(TableView &tableView)
{
    const double offset = tableView.contentOffset();
    const double height = viewHeader.frame().height();
    if (lastContentOffset <= height && offset > height) {
        qCInfo(logApp, " ******* Header view just disappeared");
        viewHideShow.setHidden(false);
    } else if (lastContentOffset > height && offset <= height) {
        qCInfo(logApp, " ******* Header view just appeared");
        viewHideShow.setHidden(true);
    }
    lastContentOffset = offset;
}

void RadioViewController::acctionMenu() { backToMenu(); }

void RadioViewController::acctionFacebook()
{
    m_shareData.functionFacebook(hl1.text(), AppDelegate::shared().gurl2, *this);
}

void RadioViewController::acctionTwitter()
{
    GLOB::glob_ShowHud();
    performAfterDelay(0.1, [this] { callTwiter(); });
}

void RadioViewController::callTwiter()
{
    m_shareData.functionTwitter(hl1.text(), himgsinger.image(), AppDelegate::shared().gurl2, *this);
}

void RadioViewController::acctionEmail() { m_shareData.shairEmailOption(shared_from_this()); }

} // namespace orvel
