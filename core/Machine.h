#pragma once

// What the engine needs of the machine it runs on: the clock, the user's settings, the program's
// folder.

#include <string>

#include "core/DateTime.h"

namespace zolmara {

class Machine {
public:
    virtual ~Machine() = default;

    /// The machine's clock, local time. The engine's clock is Now() of core/Clock.h.
    virtual DateTime Now() = 0;
    /// Whether the program's own clock may be set.
    virtual bool MaySetClock() { return true; }
    virtual std::string GetSetting(const std::string& application, const std::string& section,
                                   const std::string& key, const std::string& fallback) = 0;
    virtual void SaveSetting(const std::string& application, const std::string& section,
                             const std::string& key, const std::string& value) = 0;
    /// The folder of the program, where its loose files lie.
    virtual std::string ProgramFolder() = 0;
    /// Ends the program on the spot.
    [[noreturn]] virtual void EndProgram();
};

Machine& TheMachine();

}  // namespace zolmara
