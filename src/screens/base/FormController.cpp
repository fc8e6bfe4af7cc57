#include "screens/base/FormController.h"

#include "api/SignedRequest.h"
#include "api/json/JsonText.h"
#include "app/GLOB.h"
#include "platform/foundation/Log.h"

namespace orvel {

namespace {

const QColor lightGrey(170, 170, 170);

// Returns the answer's error; absent when there is none. What is not an object counts as missing.
JsonValue errorOf(const JsonValue &answer, FormError place)
{
    const JsonValue outer = answer[place == FormError::UnderZero ? "0" : "error"];
    if (!outer.isObject())
        return {};
    if (place == FormError::AtTop)
        return outer;
    // An outer object is an error already, whatever it holds.
    const JsonValue inner = outer["error"];
    return inner.isObject() ? inner : JsonValue::emptyObject();
}

} // namespace

void FormController::viewDidLoad()
{
    viewCenter.setBorderWidth(2);
    viewCenter.setBorderColor(lightGrey);
    prepareField(txtEmail);
    prepareField(txtPass);
}

void FormController::prepareField(TextField &field)
{
    field.setLeftImage(QStringLiteral("tblank.png"));
    field.setShouldReturn([this](TextField &sender) { textFieldShouldReturn(sender); });
}

bool FormController::textFieldShouldReturn(TextField &field)
{
    field.resignFirstResponder();
    return true;
}

void FormController::acctionLogin()
{
    for (const FormCheck &check : form().checks) {
        if (check.accepts(check.field->text()))
            continue;
        GLOB::glob_alert(check.complaint);
        check.field->becomeFirstResponder();
        return;
    }
    GLOB::glob_ShowHud();
    performAfterDelay(0.1, [this] { sendRequest(); });
}

void FormController::sendRequest()
{
    const Form sent = form();
    const std::shared_ptr<HttpRequest> request = makeSignedRequest(sent.endpoint);
    request->addRequestHeader(QStringLiteral("Content-Type"),
                              QStringLiteral("application/x-www-form-urlencoded"));
    for (const FormValue &value : sent.values)
        request->addPostValue(value.field->text(), value.key);
    request->setDelegate(shared(this));
    request->startSynchronous();
}

void FormController::requestFinished(HttpRequest &request)
{
    const JsonValue answer = JSONValue(request.responseString());
    qCInfo(logApp).noquote().nospace() << "diction-->" << answer.text();
    const JsonValue error = errorOf(answer, form().error);
    if (error.isAbsent())
        requestSucceeded(answer["content"]);
    else
        GLOB::glob_alert(error["message"].string());
    GLOB::glob_HideHud();
}

void FormController::requestFailed(HttpRequest &request)
{
    const QString description = request.error().localizedDescription;
    qCWarning(logApp).noquote() << description;
    GLOB::glob_HideHud();
    GLOB::glob_alert(description);
}

void FormController::emptyFields()
{
    txtEmail.setText(QStringLiteral(""));
    txtPass.setText(QStringLiteral(""));
}

FormCheck FormController::emailIsValid()
{
    return {&txtEmail, GLOB::glob_validateEmailWithString, QStringLiteral("Please enter a valid email")};
}

FormCheck FormController::isNotEmpty(TextField &field, const QString &complaint)
{
    return {&field, [](const QString &text) { return !text.isEmpty(); }, complaint};
}

void FormController::ShowMessage() { m_contact->ShowMessage(*this); }

} // namespace orvel
