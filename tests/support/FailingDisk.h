#pragma once

// A disk that fails once: the n-th call of the database library that changes or reads a file.

#include <sqlite3.h>

namespace zolmara::test {

/// While it lives, databases that are opened go through it.
class FailingDisk {
public:
    enum class Calls { Writes, Reads };

    FailingDisk();
    ~FailingDisk();
    FailingDisk(const FailingDisk&) = delete;
    FailingDisk& operator=(const FailingDisk&) = delete;

    /// The n-th call from here on (from 1) gives this SQLite error, and those after it work again.
    void FailAt(int call, int code, Calls which = Calls::Writes);
    /// No call fails from here on; counts begin anew.
    void Work();
    /// Calls since the last FailAt or Work.
    int Count() const;
    bool Failed() const;
};

}  // namespace zolmara::test
