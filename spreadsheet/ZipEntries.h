#pragma once

// The files in a zip archive that lies in memory.

#include <memory>
#include <string>
#include <string_view>

namespace zolmara {

class ZipEntries {
public:
    /// UnreadableSheets for what is no archive, and for one that unpacks to more than a workbook
    /// of this form ever can.
    explicit ZipEntries(std::string_view archive);
    ~ZipEntries();
    ZipEntries(const ZipEntries&) = delete;
    ZipEntries& operator=(const ZipEntries&) = delete;

    bool Has(const std::string& name) const;
    /// A whole entry, unpacked. UnreadableSheets for one that is missing or damaged.
    std::string Read(const std::string& name) const;

private:
    void NeedModestSize() const;

    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace zolmara
