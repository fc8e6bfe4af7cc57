#include "screens/base/DataScreen.h"

#include "app/GLOB.h"

namespace orvel {

void DataScreen::performUnderHud(double seconds, std::function<void()> work)
{
    GLOB::glob_ShowHud();
    performAfterDelay(seconds, std::move(work));
}

void DataScreen::ask(const QString &path)
{
    const auto request = std::make_shared<PostData>();
    request->setDelegate(shared(this));
    request->postGetSecondSection(path);
}

void DataScreen::PostFail(const QString &message)
{
    GLOB::glob_alert(message);
    GLOB::glob_HideHud();
}

void DataScreen::acctionMenu() { backToMenu(); }

void DataScreen::ShowMessage() { m_contact->ShowMessage(*this); }

} // namespace orvel
