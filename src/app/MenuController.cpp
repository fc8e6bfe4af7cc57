#include "app/MenuController.h"

#include "api/StationConfiguration.h"
#include "app/AppDelegate.h"
#include "app/GLOB.h"
#include "platform/foundation/FormatText.h"

#include <QVariant>
#include <array>

namespace orvel {

namespace {

struct Section
{
    const char *title;
    int firstRow;
    int rowCount;
};
// The titles end in a space.
constexpr std::array<Section, 4> sections{{
    {"Ecouter ", 0, 4},
    {"A la Une ", 4, 5},
    {"Ma Radio ", 9, 2},
    {"Plus ", 11, 8},
}};

enum class Opens { Centre, Modal, Page };

struct Row
{
    const char *title;
    Opens opens;
    const char *layoutName = nullptr; // of the screen
    // What is set on the screen; not set when nullptr. An empty strTitle stands for the row's own title.
    const char *strTitle = nullptr;
    const char *strType = nullptr;
    const char *url = nullptr;
    QString StationConfiguration::*page = nullptr; // what the system's browser shows
};
using enum Opens;
constexpr std::array<Row, 19> rows{{
    {"Radios", Centre, "RadioViewController", ""},
    {"Favoris", Centre, "RadioFav", ""},
    {"Titre diffusés", Centre, "TitrusController"},
    {"Top 10", Centre, "RadioTopTen", ""},
    {"News", Centre, "NewsController", "", "news"},
    {"Sons", Centre, "NewsController", "", "son"},
    {"Vidéos", Centre, "NewsController", "", "video"},
    {"Concours", Centre, "NewsController", "", "concours"},
    {"Agenda", Centre, "AgendaController", "Agenda", "agenda"},
    {"Grille des programmes", Centre, "EmissionsController"},
    {"Fréquences", Centre, "FrequenceController", "Frequences"},
    {"Mon compte", Modal, "MonoCompteController"},
    {"Inscrivez-vous à la Newsletter", Modal, "NewsLetterController"},
    {.title = "Site Web", .opens = Page, .page = &StationConfiguration::siteUrl},
    {.title = "Orvel Radio sur Facebook", .opens = Page, .page = &StationConfiguration::facebookPage},
    {.title = "Orvel Radio sur Twitter", .opens = Page, .page = &StationConfiguration::twitterPage},
    {.title = "Orvel Radio sur Google+", .opens = Page, .page = &StationConfiguration::googlePage},
    {.title = "Orvel Radio sur Instagram", .opens = Page, .page = &StationConfiguration::instagramPage},
    {.title = "Mentions légales",
     .opens = Modal,
     .layoutName = "webCont",
     .url = "qrc:/assets/pages/leagals.html"},
}};

// The screen's class must have the property.
void set(ViewController &screen, const char *property, const QVariant &value)
{
    [[maybe_unused]] const bool isThere = screen.setProperty(property, value);
    Q_ASSERT(isThere);
}

void setIfGiven(ViewController &screen, const char *property, const QString &value)
{
    if (!value.isNull())
        set(screen, property, value);
}

void openPage(const QString &url)
{
    openOutside(url, QStringLiteral("Aucun navigateur de cet appareil n'a pu ouvrir la page %1.").arg(url));
}

void becomeCentre(const std::shared_ptr<ViewController> &screen)
{
    AppDelegate::shared().revealSideViewController()->popViewControllerWithNewCenterController(screen, true);
}

int indexOf(IndexPath path) { return sections[std::size_t(path.section)].firstRow + path.row; }

} // namespace

void MenuController::viewDidLoad()
{
    searchBar.setSearchButtonClicked([this](SearchBar &bar) { searchBarSearchButtonClicked(bar); });
    tableCont.registerCell(QStringLiteral("Cell"), [] { return std::make_shared<MenuCell>(); });
    tableCont.setDataSource(shared(this));
    tableCont.setDelegate(shared(this));
    tableCont.reloadData();
    performAfterDelay(0.5, [this] { setData(); });
}

void MenuController::setData()
{
    searchBar.setDarkField(true);
    if (!m_array.isEmpty())
        return;
    for (const Row &row : rows)
        m_array << QString::fromUtf8(row.title);
    tableCont.reloadData();
}

void MenuController::searchBarSearchButtonClicked(SearchBar &bar)
{
    const auto home = AppDelegate::shared().catalogue().screenNamed(QStringLiteral("HomeController"));
    if (home) {
        set(*home, "strSearch", bar.text());
        set(*home, "isRun", true);
        becomeCentre(home);
    } else {
        showNotThereYet();
    }
    bar.setText(QStringLiteral(""));
}

int MenuController::numberOfSectionsInTableView(TableView &) { return int(sections.size()); }

int MenuController::numberOfRowsInSection(TableView &, int section)
{
    return section >= 0 && section < int(sections.size()) ? sections[std::size_t(section)].rowCount : 0;
}

std::shared_ptr<TableViewCell> MenuController::cellForRowAtIndexPath(TableView &tableView,
                                                                     IndexPath indexPath)
{
    const auto cell = std::static_pointer_cast<MenuCell>(
        tableView.dequeueReusableCellWithIdentifier(QStringLiteral("Cell")));
    cell->textLabel.setText(titleOfRow(indexPath));
    return cell;
}

QString MenuController::titleOfRow(IndexPath indexPath) const
{
    return formatText(m_array.value(indexOf(indexPath)));
}

double MenuController::heightForRowAtIndexPath(TableView &, IndexPath) { return 45; }

double MenuController::heightForHeaderInSection(TableView &, int) { return 30; }

std::shared_ptr<View> MenuController::viewForHeaderInSection(TableView &, int section)
{
    auto header = std::make_shared<MenuHeader>();
    header->title.setText(QString::fromUtf8(sections[std::size_t(section)].title));
    return header;
}

void MenuController::didSelectRowAtIndexPath(TableView &, IndexPath indexPath)
{
    const Row &row = rows[std::size_t(indexOf(indexPath))];
    if (row.opens == Page) {
        openPage(StationConfiguration::current().*row.page);
        return;
    }
    const auto screen = AppDelegate::shared().catalogue().screenNamed(QString::fromUtf8(row.layoutName));
    if (!screen) {
        showNotThereYet();
        return;
    }
    const QString strTitle = QString::fromUtf8(row.strTitle);
    setIfGiven(*screen, "strTitle",
               strTitle.isEmpty() && !strTitle.isNull() ? titleOfRow(indexPath) : strTitle);
    setIfGiven(*screen, "strType", QString::fromUtf8(row.strType));
    setIfGiven(*screen, "url", QString::fromUtf8(row.url));
    if (row.opens == Modal)
        presentViewController(screen, false);
    else
        becomeCentre(screen);
}

} // namespace orvel
