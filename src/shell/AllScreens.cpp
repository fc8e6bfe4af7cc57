#include "shell/AllScreens.h"

#include "app/MenuController.h"
#include "screens/radio/RadioViewController.h"

namespace orvel {

std::shared_ptr<ViewController> AllScreens::screenNamed(const QString &layoutName) const
{
    if (layoutName == QLatin1String("RadioViewController"))
        return std::make_shared<RadioViewController>();
    if (layoutName == QLatin1String("MenuController"))
        return std::make_shared<MenuController>();
    return nullptr;
}

} // namespace orvel
