#pragma once

#include "screens/base/ListScreen.h"

namespace orvel {

// The FM frequencies of the station, a row a city. A row has no effect when it is chosen.
// Deliberate: lblTitle stays empty, the layout names the screen
// (FrequenceControllerTest.ShowsWhatTheServerSends).
class FrequenceController : public orvel::ListScreen
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are made by name in C++")

public:
    qint32 rowSelected = 0; // -1 once loaded; nothing reads it

    void functionGetData();
    Q_INVOKABLE void MenuController() { acctionMenu(); }
    Q_INVOKABLE void acctionEmail() {}

    double heightForRowAtIndexPath(TableView &, IndexPath) override { return 60; }

protected:
    void viewDidLoad() override;
    std::shared_ptr<TableViewCell> cellFor(const JsonValue &city, int row) override;
};

} // namespace orvel
