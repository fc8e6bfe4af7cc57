#include "app/MenuController.h"

#include "app/AppDelegate.h"
#include "app/GLOB.h"
#include "platform/foundation/FormatText.h"

#include <QVariant>

namespace orvel {

namespace {

struct Section
{
    const char *title;
    int firstRow;
    int rowCount;
};
// The section titles end in a space.
constexpr std::array<Section, 4> sections{{
    {"Ecouter ", 0, 4},
    {"A la Une ", 4, 5},
    {"Ma Radio ", 9, 2},
    {"Plus ", 11, 8},
}};

struct Row
{
    const char *title;
    const char *layoutName; // the screen that becomes the centre; null when there is none
};
constexpr std::array<Row, 19> rows{{
    {"Radios", "RadioViewController"},
    {"Favoris", nullptr},
    {"Titre diffusés", nullptr},
    {"Top 10", nullptr},
    {"News", nullptr},
    {"Sons", nullptr},
    {"Vidéos", nullptr},
    {"Concours", nullptr},
    {"Agenda", nullptr},
    {"Grille des programmes", nullptr},
    {"Fréquences", nullptr},
    {"Mon compte", nullptr},
    {"Inscrivez-vous à la Newsletter", nullptr},
    {"Site Web", nullptr},
    {"Orvel Radio sur Facebook", nullptr},
    {"Orvel Radio sur Twitter", nullptr},
    {"Orvel Radio sur Google+", nullptr},
    {"Orvel Radio sur Instagram", nullptr},
    {"Mentions légales", nullptr},
}};

int indexOf(IndexPath path) { return sections[std::size_t(path.section)].firstRow + path.row; }

} // namespace

MenuController::MenuController()
{
    for (std::size_t i = 0; i < sections.size(); ++i)
        m_headers[i].title.setText(QString::fromUtf8(sections[i].title));
}

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
    bar.setText(QStringLiteral(""));
    showNotThereYet();
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

QObject *MenuController::viewForHeaderInSection(TableView &, int section)
{
    return &m_headers[std::size_t(section)];
}

void MenuController::didSelectRowAtIndexPath(TableView &, IndexPath indexPath)
{
    const char *const layoutName = rows[std::size_t(indexOf(indexPath))].layoutName;
    const auto screen = layoutName
                            ? AppDelegate::shared().catalogue().screenNamed(QString::fromUtf8(layoutName))
                            : std::shared_ptr<ViewController>();
    if (!screen) {
        showNotThereYet();
        return;
    }
    screen->setProperty("strTitle", titleOfRow(indexPath));
    AppDelegate::shared().revealSideViewController()->popViewControllerWithNewCenterController(screen, true);
}

} // namespace orvel
