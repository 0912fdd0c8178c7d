#pragma once

// A long run (calculation, edit checks, printing, import) does its steps one after the other. A
// step that fails ends the run there: what was finished before stands, and the message says so.

#include <functional>
#include <string>
#include <string_view>

#include "store/Dao.h"

namespace zolmara {

/// A run that ended part way. Its text names the step and tells why.
class RunStopped : public StoreError {
public:
    explicit RunStopped(const std::string& text);
};

/// Does one step of a run. What stops it goes on as RunStopped with the step's name; an error of
/// the file itself goes on as the StoreError that it is, with the name ahead.
void RunStep(std::string_view name, const std::function<void()>& step);

}  // namespace zolmara
