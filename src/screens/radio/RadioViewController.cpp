#include "screens/radio/RadioViewController.h"

#include "app/AppDelegate.h"
#include "app/GLOB.h"
#include "app/MenuController.h"
#include "platform/foundation/FormatText.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/NotificationCentre.h"
#include "screens/radio/cellCustomRadio.h"

#include <algorithm>

namespace orvel {

namespace {

constexpr double headerHeight = 352;
constexpr double rowHeight = 60;

const QString favIcon = QStringLiteral("list_fav_icon.png");
const QString favIconFull = QStringLiteral("list_fav_icon_full.png");

// The last scroll offset seen by any list of web radios.
double lastContentOffset = 0;

QPointF centerOf(const View &view) { return view.frame().center(); }

void setImages(Button &button, const QString &name)
{
    button.setImage(name, ControlState::Normal);
    button.setImage(name, ControlState::Highlighted);
}

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
    const std::vector<JsonValue> favourites = GLOB::glob_favArray().value_or(std::vector<JsonValue>());
    m_strURL = response["media_url"].text();
    const JsonValue content = response["content"];
    for (JsonValue entry : content.isArray() ? content.values() : std::vector<JsonValue>()) {
        if (!entry.isObject())
            continue;
        const qint64 identifier = entry["id"].integerValue();
        const bool isFavourite =
            std::any_of(favourites.begin(), favourites.end(), [&](const JsonValue &favourite) {
                return favourite["id"].integerValue() == identifier;
            });
        entry.set(QStringLiteral("fav"), isFavourite ? favIconFull : favIcon);
        entry.set(QStringLiteral("songtitle"), QStringLiteral(""));
        entry.set(QStringLiteral("imageurl"), m_strURL);
        m_array.push_back(entry);
    }
    tableCont.reloadData();
    const auto &radio = AppDelegate::shared().radio();
    if (radio && radio->isPlaying())
        setDataRadio();
    GLOB::glob_HideHud();
}

void RadioViewController::PostFail(const QString &message)
{
    GLOB::glob_alert(message);
    GLOB::glob_HideHud();
}

JsonValue RadioViewController::entryAt(qsizetype row) const
{
    return row >= 0 && row < qsizetype(m_array.size()) ? m_array[std::size_t(row)] : JsonValue();
}

int RadioViewController::numberOfSectionsInTableView(TableView &) { return 1; }

int RadioViewController::numberOfRowsInSection(TableView &, int) { return int(m_array.size()); }

double RadioViewController::heightForRowAtIndexPath(TableView &, IndexPath) { return rowHeight; }

double RadioViewController::heightForHeaderInSection(TableView &, int) { return headerHeight; }

QObject *RadioViewController::viewForHeaderInSection(TableView &, int) { return &viewHeader; }

QObject *RadioViewController::viewForFooterInSection(TableView &, int) { return &m_viewFooter; }

std::shared_ptr<TableViewCell> RadioViewController::cellForRowAtIndexPath(TableView &tableView,
                                                                          IndexPath indexPath)
{
    const auto cell = std::static_pointer_cast<cellCustomRadio>(
        tableView.dequeueReusableCellWithIdentifier(QStringLiteral("cell")));
    const JsonValue entry = entryAt(indexPath.row);
    cell->img.setImageWithProgressIndicatorAndURL(formatPath(entry["imageurl"].text(), entry["file"].text()),
                                                  centerOf(cell->img));
    cell->lblTitle.setText(entry["title"].text());
    cell->lblDesc.setText(emptyWhenNull(entry["songtitle"]));
    cell->btnFav.setTag(indexPath.row);
    cell->btnFav.setBackgroundImage(entry["fav"].text());
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
    hl1.setText(entry["title"].text());
    hl2.setText(emptyWhenNull(entry["subtitle"]));
    // The compact bar takes the header's centres.
    bimgsinger.setImageWithProgressIndicatorAndURL(picture, centerOf(himgsinger));
    bimg.setImageWithProgressIndicatorAndURL(logo, centerOf(himg));
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
    showPlaying(true);
}

void RadioViewController::showPlaying(bool isPlaying)
{
    viewNowPlaying.setHidden(viewNowPlaying.hidden() && !isPlaying);
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

void RadioViewController::acctionMenu()
{
    AppDelegate::shared().revealSideViewController()->pushOldViewControllerOnDirection(
        RevealSideViewController::Side::Left, true);
}

} // namespace orvel
