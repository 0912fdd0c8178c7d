#pragma once

// What a batch changed, kept so that it can be taken back and put in again.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "store/Dao.h"

namespace zolmara {

class StateFile;

/// A row by its rowid, before and after a batch. The cells are packed as they are stored. Of a row
/// that was there before and after, what both have in common at either end is left out.
struct RowChange {
    std::int64_t Row = 0;
    bool Existed = false;
    bool Exists = false;
    std::size_t Head = 0;  ///< bytes left out in front
    std::size_t Tail = 0;  ///< and at the end
    std::string Before;
    std::string After;
};

struct TableChange {
    std::string Table;
    std::vector<RowChange> Rows;
};

/// The rows that a batch changed; or, where it changed a table's shape or too many rows, the whole
/// file as it was before.
struct BatchChange {
    std::vector<TableChange> Tables;
    std::shared_ptr<StateFile> Before;
    std::shared_ptr<StateFile> After;  ///< filled when it is taken back
    bool Unknown = false;              ///< the file as it was before could not be kept
};

/// Whoever wants to know what the batches of a file change. While a file is watched, a write
/// outside a batch is a batch of its own.
class BatchWatch {
public:
    virtual ~BatchWatch() = default;
    /// A batch needs the file as its last commit left it. None when it cannot be kept.
    virtual std::shared_ptr<StateFile> KeepState() = 0;
    /// A batch has been committed.
    virtual void Committed(BatchChange change) = 0;
    /// Another program has written to the file.
    virtual void ChangedElsewhere() = 0;
    /// The file has been closed.
    virtual void Gone() = 0;
};

/// Tells the watch of the batches of an open file from now on; null ends it.
void WatchBatches(Database& db, BatchWatch* watch);
/// The watch of an open file; null without one.
BatchWatch* WatchOf(Database& db);

/// Takes rows back, or with `forward` puts them in again, in one transaction. StoreError when the
/// rows are not as the change left them, and for an error of the file; then it is as it was.
void ApplyRows(Database& db, const std::vector<TableChange>& tables, bool forward);

/// The whole content of a CRF at some moment, in a file of its own that goes with this object.
class StateFile {
public:
    /// Copies what the last commit left in `source` to the new file `path`. StoreError.
    StateFile(const std::string& source, std::string path);
    ~StateFile();
    StateFile(const StateFile&) = delete;
    StateFile& operator=(const StateFile&) = delete;

    const std::string& Path() const { return path_; }

private:
    std::string path_;
};

/// Makes an open file what a state was, in one transaction. StoreError; then it is as it was.
void BringBack(Database& db, const StateFile& state);

}  // namespace zolmara
