#pragma once

// An act on files, tried with each of its calls failing once, by a full disk, by a disk error, and
// by the death of the program.

#include <functional>
#include <set>
#include <string>
#include <string_view>

#include "store/harness/Faults.h"
#include "support/TestCrf.h"

namespace zolmara::test {

constexpr int kKill = -1;

/// A folder with the filled file as "One.CRF", made anew for each try.
class FaultTries : public SessionTest {
protected:
    FaultTries();

    std::string In(std::string_view name) const { return work_ + "/" + std::string(name); }
    void StartAnew() const;
    static void Open(const std::string& path);
    /// What an opening finds in a CRF; it must be whole.
    static std::string ContentOfFile(const std::string& path);
    /// What stays but for the scratch of the dead, which the next close clears.
    std::set<std::string> Names() const;

    /// `prepare` and then `act` in a program of their own, as often as `act` makes calls, each time
    /// with another one failing. `check` looks at what is left, first after an undisturbed act.
    void Try(const std::function<void()>& prepare, const std::function<void()>& act,
             const std::function<void()>& check);

    /// In a short run not every call of a long act is tried. ZOLMARA_FAULTS=n tries n of them.
    int mostBetween_ = 6;
    std::string base_ = folder.File("Base.CRF");
    std::string work_ = folder.File("work");

private:
    int CountCalls(const std::function<void()>& prepare, const std::function<void()>& act);
    std::set<int> Moments(int calls, int kind) const;
};

}  // namespace zolmara::test
