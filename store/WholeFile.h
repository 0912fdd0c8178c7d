#pragma once

// A closed Cost Report File as a whole.

#include <string>

namespace zolmara {

/// A file that is written aside. It and its journal are gone before and after.
struct ScratchFile {
    std::string Path;
    explicit ScratchFile(std::string path) : Path(std::move(path)) { Remove(); }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;
    ~ScratchFile() { Remove(); }
    void Remove();
};

/// Puts a finished file in the place of another, so that at no moment neither is there.
void ReplaceFile(const std::string& fresh, const std::string& path);

}  // namespace zolmara
