#pragma once

#include "platform/ui/containers/ActionSheet.h"
#include "platform/ui/containers/AlertView.h"

namespace orvel::test {

// Notes the buttons that are chosen: their numbers, with an alert's tag as the tens.
struct Answers : AlertViewDelegate, ActionSheetDelegate
{
    void clickedButtonAtIndex(ActionSheet &, int button) override { seen << button; }
    void clickedButtonAtIndex(AlertView &alert, int button) override { seen << 10 * alert.tag() + button; }
    QList<int> seen;
};

} // namespace orvel::test
