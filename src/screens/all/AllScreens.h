#pragma once

#include "app/ScreenCatalogue.h"

namespace orvel {

// Every screen that this client has.
class AllScreens : public ScreenCatalogue
{
public:
    std::shared_ptr<ViewController> screenNamed(const QString &layoutName) const override;
};

} // namespace orvel
