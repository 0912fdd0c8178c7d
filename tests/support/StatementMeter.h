#pragma once

// What a step asks of the store, counted: the same on every machine and at every run.

#include <cstdint>
#include <functional>

namespace zolmara::test {

struct StoreWork {
    std::int64_t Statements = 0;
    std::int64_t Steps = 0;  ///< instructions of SQLite's machine
};

/// Watches the connections that are opened while it lives.
class StatementMeter {
public:
    StatementMeter();
    ~StatementMeter();
    StatementMeter(const StatementMeter&) = delete;
    StatementMeter& operator=(const StatementMeter&) = delete;

    StoreWork CountOf(const std::function<void()>& work) const;
};

}  // namespace zolmara::test
