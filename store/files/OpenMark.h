#pragma once

// Who has a Cost Report File open. SQLite's locks last as long as a statement or a batch; between
// them nothing tells that somebody's work would be lost if another file took its place.

#include <memory>
#include <string>

#include "store/files/FileGuard.h"
#include "store/files/FileLock.h"

namespace zolmara {

/// Tells other programs that a CRF is open, and the door that it is not to be written. Made ahead
/// of SQLite's own opening and dropped behind its closing: while SQLite has a file open, no other
/// descriptor of that file may be closed in the process, since that would drop SQLite's locks. So
/// all marks of one file share one descriptor.
class OpenMark {
public:
    /// StoreError::Locked while another program puts a file in its place.
    explicit OpenMark(const std::string& path);
    ~OpenMark();
    OpenMark(const OpenMark&) = delete;
    OpenMark& operator=(const OpenMark&) = delete;

private:
    ProtectedFile protected_;
    std::shared_ptr<Descriptor> file_;
};

/// Makes sure that nobody has a file open, and that nobody opens it, for as long as it lives.
class SoleClaim {
public:
    /// StoreError::Locked when somebody, in this process too, has it open.
    explicit SoleClaim(const std::string& path);

private:
    Descriptor file_;
};

}  // namespace zolmara
