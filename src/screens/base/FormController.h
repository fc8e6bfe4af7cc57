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

// What a form checks before it is sent. The first complaint is shown.
struct FormCheck
{
    TextField *field;
    bool (*accepts)(const QString &text);
    QString complaint;
};

// A field of a form and its name in the request.
struct FormValue
{
    QString key;
    const TextField *field;
};

// Where an answer holds its error: an object with a "message" under "error", or one level deeper, under "0".
// Deliberate: an answer that can't be read holds none, so that an error page counts as a success
// (AccountFormsTest.TakesWhatIsNoErrorOfItsOwnKindForASuccess).
enum class FormError { AtTop, UnderZero };

struct Form
{
    QString endpoint;
    std::vector<FormCheck> checks; // in this order
    std::vector<FormValue> values; // sent in this order
    FormError error;
};

// A screen that is a form: checks its fields, sends them as one signed request and shows the outcome. Logs
// the answer, never what is sent.
class FormController : public orvel::ViewController, public HttpRequestDelegate
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are made by name in C++")
    OUTLET(BorderedView, viewCenter);
    OUTLET(TextField, txtEmail);
    OUTLET(TextField, txtPass);

public:
    // Checks the fields. When all pass, shows the overlay and sends them 0.1 s later.
    Q_INVOKABLE void acctionLogin();
    // Shows the contact sheet.
    Q_INVOKABLE void ShowMessage();

    void sendRequest();
    void requestFinished(HttpRequest &request) override;
    void requestFailed(HttpRequest &request) override;
    bool textFieldShouldReturn(TextField &field);

protected:
    virtual Form form() = 0;
    // Called when the answer holds no error. `content` is absent when the answer has none or can't be read.
    virtual void requestSucceeded(const JsonValue &content) = 0;

    void viewDidLoad() override;
    // Insets the field's text, and makes Return give up the keyboard.
    void prepareField(TextField &field);
    void emptyFields();

    FormCheck emailIsValid();
    static FormCheck isNotEmpty(TextField &field, const QString &complaint);

private:
    std::shared_ptr<ContactSheet> m_contact = ContactSheet::make();
};

} // namespace orvel
