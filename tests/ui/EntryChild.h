#pragma once

// The program in a process of its own that opens a CRF in its windows, keys into worksheet A, and
// dies: tests look at what is left of the file.

#include <string>

namespace zolmara::ui {

/// What is keyed: a row that is left, or a block that is pasted.
enum class ChildAct { Row, Paste };

struct EntryChild {
    std::string Crf;
    ChildAct Act = ChildAct::Row;
    /// Dies at the n-th call that changes a file in the CRF's folder from the last key on, as a
    /// killed program does; 0: behind the last key.
    int DiesAt = 0;
};

/// Runs the program and gives the calls that it made, -1 where it died ahead of the count. Fails
/// the test when it ends in another way than by SIGKILL.
int RunEntryChild(const EntryChild& child);

/// The program itself, which `main` calls where the command line asks for it.
bool IsEntryChild(int argc, char** argv);
int BeEntryChild(char** argv);

/// The rows that the paste fills in column 1 of worksheet A, from line 8 on.
inline constexpr int kPastedRows = 5;

}  // namespace zolmara::ui
