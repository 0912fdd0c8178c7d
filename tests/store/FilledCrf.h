#pragma once

// A calculated Cost Report File with a row of every kind, and what a file holds and how it fares
// in the hands of a child process that dies.

#include <functional>
#include <string>

namespace zolmara::test {

/// The file, made once in a process. Copy it: nobody writes to it.
const std::string& FilledFile();

/// A copy of the file under this path, open as the session's CRF.
void OpenFilledCopy(const std::string& path);

std::string BytesOf(const std::string& path);

/// All that the open CRF holds, as text: every table's fields and rows.
std::string ContentOfCrf();

/// How a child process ended, and what it had to say.
struct ChildEnd {
    bool Killed = false;
    int Status = -1;      ///< of its exit
    std::string Message;  ///< what() of the exception that ended it
};

/// Runs `prepare` and then `work` in a child process: exit status 0, 3 for a full disk, 4 for any
/// other StoreError, 5 for anything else.
ChildEnd RunInChild(const std::function<void()>& prepare, const std::function<void()>& work);

}  // namespace zolmara::test
