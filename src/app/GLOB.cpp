#include "app/GLOB.h"

#include "api/Signature.h"
#include "app/AppDelegate.h"
#include "app/FavouriteStore.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/MainQueue.h"
#include "platform/modal/InputGate.h"
#include "platform/system/SystemServices.h"
#include "platform/ui/containers/ProgressHud.h"

#include <QDateTime>
#include <QLocale>
#include <QRegularExpression>

namespace orvel {

namespace {

const QStringList okButton{QStringLiteral("OK")};

void tell(const QString &sentence) { Window::showAlert(QStringLiteral("Orvel Radio"), sentence, okButton); }

// "mar. 24": the locale's short names have their full stop.
QString frenchDay(QDate day) { return QLocale(QLocale::French).toString(day, QStringLiteral("ddd dd")); }

} // namespace

void GLOB::glob_alert(const QString &message)
{
    Window::showAlert(QStringLiteral("Alert"), message, okButton);
}

bool GLOB::glob_validateEmailWithString(const QString &text)
{
    static const QRegularExpression address(QRegularExpression::anchoredPattern(
        QStringLiteral("[A-Z0-9a-z._%+-]+@[A-Za-z0-9.-]+\\.[A-Za-z]{2,4}")));
    return address.match(text).hasMatch();
}

QString GLOB::glob_hmacsha1(const QString &text, const QString &secret)
{
    return orvel::glob_hmacsha1(text, secret);
}

QString GLOB::glob_CurrentTime() { return orvel::glob_CurrentTime(); }

void GLOB::glob_ShowHud()
{
    const bool isMainThread = MainQueue::isMainThread();
    if (isMainThread)
        InputGate::shared().hold(); // a second tap on the way to the overlay is none
    MainQueue::async([isMainThread] {
        ProgressHud::shared().showWithStatus(QStringLiteral("Please Wait..."));
        if (isMainThread)
            InputGate::shared().release();
    });
}

void GLOB::glob_HideHud()
{
    MainQueue::async([] { ProgressHud::shared().dismiss(); });
}

QString GLOB::glob_GetCout(const JsonValue &array) { return QString::number(array.size()); }

std::optional<std::vector<JsonValue>> GLOB::glob_favArray() { return FavouriteStore().radios(); }

JsonValue GLOB::glob_isNULL(const JsonValue &value)
{
    return value.isAbsent() || value.isNull() ? JsonValue(QStringLiteral("")) : value;
}

void GLOB::glob_login(ViewController &presenter)
{
    const auto login = AppDelegate::shared().catalogue().screenNamed(QStringLiteral("MonoCompteController"));
    if (login)
        presenter.presentViewController(login, false);
    else
        showNotThereYet();
}

QStringList GLOB::glob_getNext30Days()
{
    QStringList days{QStringLiteral("Aujourd'hui")};
    const QDate today =
        QDateTime::fromMSecsSinceEpoch(qint64(RunLoop::main().secondsSince1970() * 1000)).date();
    for (int n = 1; n <= 30; ++n)
        days << frenchDay(today.addDays(n));
    qCInfo(logApp) << days;
    return days;
}

void showNotThereYet() { tell(QStringLiteral("Cette rubrique n'est pas encore disponible.")); }

void backToMenu()
{
    AppDelegate::shared().revealSideViewController()->pushOldViewControllerOnDirection(
        RevealSideViewController::Side::Left, true);
}

void openOutside(const QString &url, const QString &failure)
{
    if (!SystemServices::current().openURL(url))
        tell(failure);
}

} // namespace orvel
