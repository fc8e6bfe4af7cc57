#pragma once

#include "platform/ui/containers/ViewController.h"

namespace orvel {

// Makes screens by the names of their layouts, so that who opens a screen need not know its class.
class ScreenCatalogue
{
public:
    virtual ~ScreenCatalogue() = default;
    // Returns a new screen; nullptr when none has that name. Its opener sets properties of its class on it
    // ("strTitle").
    virtual std::shared_ptr<ViewController> screenNamed(const QString &layoutName) const = 0;
};

} // namespace orvel
