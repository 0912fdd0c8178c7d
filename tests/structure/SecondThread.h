#pragma once

// The second thread of a rebuilding of tables, for tests, in which no table is large.

#include <atomic>
#include <functional>
#include <memory>
#include <utility>

#include "store/RebuildTables.h"

namespace zolmara::test {

/// As long as it lives, tables of any size are shared with a second thread, on any machine.
class SecondThread {
public:
    enum class Makes { None, Some, All };
    /// `ahead` is run by the second thread.
    explicit SecondThread(Makes makes = Makes::All, std::function<void()> ahead = {})
        : former_(std::exchange(TheRebuildShares(), {})) {
        RebuildShares& shares = TheRebuildShares();
        shares.LeastCells = 0;
        shares.Processors = makes == Makes::None ? 1 : 2;
        shares.SecondAlone = makes == Makes::All;
        shares.Ahead = [starts = starts_, ahead = std::move(ahead)] {
            ++*starts;
            if (ahead) ahead();
        };
    }
    ~SecondThread() { TheRebuildShares() = std::move(former_); }
    SecondThread(const SecondThread&) = delete;
    SecondThread& operator=(const SecondThread&) = delete;

    int Starts() const { return *starts_; }

private:
    std::shared_ptr<std::atomic<int>> starts_ = std::make_shared<std::atomic<int>>(0);
    RebuildShares former_;
};

}  // namespace zolmara::test
