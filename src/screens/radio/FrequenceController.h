#pragma once

#include "api/PostData.h"
#include "app/ContactSheet.h"
#include "platform/ui/containers/ViewController.h"
#include "platform/ui/outlets/Label.h"
#include "platform/ui/outlets/Outlet.h"
#include "platform/ui/table/TableView.h"

#include <vector>

namespace orvel {

// The FM frequencies of the station, city by city in the order the server sends them. Rows can't be chosen.
class FrequenceController : public orvel::ViewController,
                            public PostDataDelegate,
                            public TableViewDataSource,
                            public TableViewDelegate
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are made by name in C++")
    Q_PROPERTY(QString strTitle MEMBER strTitle)
    OUTLET(TableView, tableCont);
    // Not given the title: it keeps what the layout shows.
    OUTLET(Label, lblTitle);

public:
    qint32 rowSelected = 0; // -1 once loaded; nothing reads it
    QString strTitle;

    void functionGetData();
    void PostSuccess(const JsonValue &response) override;
    void PostFail(const QString &message) override;
    // Back to the menu.
    Q_INVOKABLE void MenuController();
    Q_INVOKABLE void ShowMessage() { m_contact->ShowMessage(*this); }
    Q_INVOKABLE void acctionEmail() {}

    int numberOfRowsInSection(TableView &tableView, int section) override;
    std::shared_ptr<TableViewCell> cellForRowAtIndexPath(TableView &tableView, IndexPath indexPath) override;
    // What the cell's layout is drawn for: a table's heights come from code.
    double heightForRowAtIndexPath(TableView &, IndexPath) override { return 60; }

protected:
    void viewDidLoad() override;

private:
    std::vector<JsonValue> m_array; // the cities
    JsonValue m_dict;               // the one whose row was built last
    std::shared_ptr<ContactSheet> m_contact = ContactSheet::make();
};

} // namespace orvel
