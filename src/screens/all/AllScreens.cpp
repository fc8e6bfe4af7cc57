#include "screens/all/AllScreens.h"

#include "app/MenuController.h"
#include "screens/account/MonoCompteController.h"
#include "screens/account/MonoCompteRegister.h"
#include "screens/account/NewsLetterController.h"
#include "screens/radio/FrequenceController.h"
#include "screens/radio/RadioFav.h"
#include "screens/radio/RadioViewController.h"

namespace orvel {

namespace {

template<class Screen>
std::shared_ptr<ViewController> make()
{
    return std::make_shared<Screen>();
}

struct Entry
{
    const char *layoutName;
    std::shared_ptr<ViewController> (*make)();
};
constexpr Entry screens[] = {
    {"FrequenceController", make<FrequenceController>},   {"MenuController", make<MenuController>},
    {"MonoCompteController", make<MonoCompteController>}, {"MonoCompteRegister", make<MonoCompteRegister>},
    {"NewsLetterController", make<NewsLetterController>}, {"RadioFav", make<RadioFav>},
    {"RadioViewController", make<RadioViewController>},
};

} // namespace

std::shared_ptr<ViewController> AllScreens::screenNamed(const QString &layoutName) const
{
    for (const Entry &screen : screens)
        if (layoutName == QLatin1String(screen.layoutName))
            return screen.make();
    return nullptr;
}

} // namespace orvel
