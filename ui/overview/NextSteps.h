#pragma once

// What to do next, made from the state of the open CRF. It replaces guessing, not the edit checks.

#include <QString>
#include <functional>
#include <vector>

namespace zolmara::ui {

struct NextStep {
    QString Text;               ///< "S-1 Part I: no contact is keyed"
    std::function<void()> Run;  ///< what is to be done about it
};

/// The steps that the state asks for, the first one first. StoreError when the CRF cannot be read.
std::vector<NextStep> ReadNextSteps();

}  // namespace zolmara::ui
