#pragma once

#include "platform/ui/containers/ViewController.h"

namespace orvel {

// Makes a screen by the name of its layout, so that whoever opens a screen need not know its class.
class ScreenCatalogue
{
public:
    virtual ~ScreenCatalogue() = default;
    // A fresh screen; nothing when there is none of that name. Its opener sets properties of its class on it
    // ("strTitle").
    virtual std::shared_ptr<ViewController> screenNamed(const QString &layoutName) const = 0;
};

} // namespace orvel
