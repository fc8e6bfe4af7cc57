#pragma once

#include "api/json/JsonValue.h"
#include "app/ContactSheet.h"
#include "platform/modal/HttpRequest.h"
#include "platform/ui/containers/ViewController.h"
#include "platform/ui/outlets/BorderedView.h"
#include "platform/ui/outlets/Outlet.h"
#include "platform/ui/outlets/TextField.h"

#include <vector>

namespace orvel {

// What a form looks at before it is sent; the first check that fails is told.
struct FormCheck
{
    TextField *field;
    bool (*accepts)(const QString &text);
    QString complaint;
};

// A field of a form under the name that the server knows it by.
struct FormValue
{
    QString key;
    const TextField *field;
};

// Where a server puts its error into an answer: an object with a "message" under "error", or the same object
// one level deeper, under "0".
enum class FormError { AtTop, UnderZero };

struct Form
{
    QString endpoint;
    std::vector<FormCheck> checks; // in this order
    std::vector<FormValue> values; // sent in this order
    FormError error;
};

// A screen that is a form: checks its fields, sends them as one signed request and tells the user what came
// of it. What it sends is never logged.
class FormController : public orvel::ViewController, public HttpRequestDelegate
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are made by name in C++")
    OUTLET(BorderedView, viewCenter);
    OUTLET(TextField, txtEmail);
    OUTLET(TextField, txtPass);

public:
    // Checks the fields; when all are well, shows the overlay and sends them 0.1 s later.
    Q_INVOKABLE void acctionLogin();
    // The contact sheet.
    Q_INVOKABLE void ShowMessage();

    void sendRequest();
    void requestFinished(HttpRequest &request) override;
    void requestFailed(HttpRequest &request) override;
    bool textFieldShouldReturn(TextField &field);

protected:
    virtual Form form() = 0;
    // The server has accepted the form. `content` is absent when the answer holds none; so it is for an
    // answer that can't be read, which counts as one without an error.
    virtual void requestSucceeded(const JsonValue &content) = 0;

    void viewDidLoad() override;
    // An inset at the left, and Return gives up the keyboard.
    void prepareField(TextField &field);
    void emptyFields();

    FormCheck emailIsValid();
    static FormCheck isNotEmpty(TextField &field, const QString &complaint);

private:
    std::shared_ptr<ContactSheet> m_contact = ContactSheet::make();
};

} // namespace orvel
