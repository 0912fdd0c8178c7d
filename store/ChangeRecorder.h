#pragma once

// Keeps each row that a batch writes to as it was at its first write. At the end of the batch it
// knows whether anything differs from the beginning, and what: the one road by which a batch that
// changed nothing is not written, and a change can be taken back.

#include <sqlite3.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "store/BatchChange.h"
#include "store/FormerNumbers.h"

namespace zolmara {

class CellCache;

/// A calculation clears cells and posts them again, so that a run over unchanged entries writes
/// rows only to put back what was there; a batch whose rows all end as they began need not touch
/// the file.
class ChangeRecorder {
public:
    /// Sees the connection's writes until its hook is taken away. It must be there before any
    /// statement is made ready: one that is made without it may empty a table unseen.
    /// The cells that are kept in memory are told of every row, too.
    ChangeRecorder(sqlite3* handle, CellCache& cells);
    ChangeRecorder(const ChangeRecorder&) = delete;
    ChangeRecorder& operator=(const ChangeRecorder&) = delete;

    /// A batch begins. With a watch, everything that it changes is kept for it.
    void Start(BatchWatch* watch);
    void Stop();
    /// A table's shape changed: no comparison of rows can take that back.
    void MarkSchemaChange();
    /// True unless every row written is as it was.
    bool NetChange();
    /// The same of one table, by the name that the file has for it.
    bool ChangedTable(const std::string& table);
    /// What changed could not be told.
    void MarkUnknown() { change_.Unknown = true; }
    /// What NetChange found, for the watch.
    BatchChange Take();

    /// As long as it lives, the one row that is written to comes out with other numbers and
    /// otherwise as it was, so that these tell what it was: the whole row need not be taken apart.
    class OnlyNumbers {
    public:
        OnlyNumbers(ChangeRecorder& recorder, const FormerNumbers& numbers) : recorder_(recorder) {
            recorder_.expected_ = &numbers;
        }
        ~OnlyNumbers() { recorder_.expected_ = nullptr; }
        OnlyNumbers(const OnlyNumbers&) = delete;
        OnlyNumbers& operator=(const OnlyNumbers&) = delete;

    private:
        ChangeRecorder& recorder_;
    };

    /// As long as it lives no row is told, which costs more than the copying of one. For tables
    /// that are told to have changed as a whole. No statement that is made ready meanwhile outlives
    /// it.
    class Rest {
    public:
        explicit Rest(ChangeRecorder& recorder) : recorder_(recorder) { recorder_.Listen(false); }
        ~Rest() { recorder_.Listen(true); }
        Rest(const Rest&) = delete;
        Rest& operator=(const Rest&) = delete;

    private:
        ChangeRecorder& recorder_;
    };

private:
    /// What a row was when the batch began.
    struct Former {
        bool Existed = true;
        std::string Packed;     ///< the row, unless only numbers of it were written to since
        FormerNumbers Numbers;  ///< those
        bool Once = false;      ///< written to once, by numbers that differ
    };
    using Rows = std::unordered_map<std::int64_t, Former>;

    static void OnWrite(void* self, sqlite3* handle, int operation, const char* database,
                        const char* table, sqlite3_int64 before, sqlite3_int64 after);
    void Listen(bool on) { sqlite3_preupdate_hook(handle_, on ? OnWrite : nullptr, this); }
    void Note(int operation, const char* table, std::int64_t row);
    Former FormerOf(int operation) const;
    void NoteAgain(Former& former) const;
    void GiveUpRows();
    bool CompareTable(const std::string& table, const Rows& rows, BatchChange* keep);

    /// Past so many rows the batch counts as a change, and its watch keeps the whole file.
    static constexpr std::size_t kMostRows = 4096;

    sqlite3* handle_;
    CellCache& cells_;
    BatchWatch* watch_ = nullptr;
    bool running_ = false;
    bool certain_ = false;
    std::size_t count_ = 0;
    const FormerNumbers* expected_ = nullptr;
    std::unordered_map<std::string, Rows> tables_;
    BatchChange change_;
};

}  // namespace zolmara
