#pragma once

// The rows of a spreadsheet file, read by a process of its own. Whatever the file does to its
// reader, the program goes on: the process may take so much memory and time, may open and write
// nothing, and gives rows or the reason why not.

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>

#include "spreadsheet/SheetReaders.h"
#include "store/files/FileLock.h"

namespace zolmara {

/// What the reading process may take.
struct SheetLimits {
    std::uint64_t FileBytes = 256ULL * 1024 * 1024;
    std::uint64_t MemoryBytes = 1536ULL * 1024 * 1024;  ///< beside what the program has already
    unsigned CpuSeconds = 120;
    std::uint64_t RowBytes = 512ULL * 1024 * 1024;  ///< of all rows that it gives
};

class SheetProcess {
public:
    /// Begins to read. StoreError::CannotOpen, with the path, for a file that is not there, is a
    /// folder or a device, is too large, or cannot be read.
    SheetProcess(const std::string& path, SheetFileKind kind, const SheetLimits& limits = {});
    ~SheetProcess();
    SheetProcess(const SheetProcess&) = delete;
    SheetProcess& operator=(const SheetProcess&) = delete;

    /// The next row; nothing behind the last one, and where the reading failed.
    std::optional<SheetRow> Next();
    /// Why the reading ended early; empty when it did not.
    const std::string& Failure() const { return failure_; }
    /// How much of the file has been read, as far as that can be told: from 0 to 1.
    double PartRead() const;

private:
    bool Fill(std::size_t bytes);
    std::string TakeText();
    std::uint32_t TakeNumber();
    SheetRow TakeRecord();
    void End(const std::string& failure);
    std::string WordsOfDeath();

    Descriptor pipe_;
    pid_t child_ = -1;
    std::string buffer_;
    std::size_t at_ = 0;
    std::uint64_t received_ = 0;
    std::uint64_t size_ = 1;
    std::string failure_;
    bool ended_ = false;
};

}  // namespace zolmara
