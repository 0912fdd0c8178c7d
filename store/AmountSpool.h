#pragma once

// The amounts of tables in a temporary file, in bands: some rows, column by column, so that some
// columns of a band lie side by side and are read at once. No more of them is ever in memory than
// one band.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "store/Dao.h"
#include "store/files/UnnamedFile.h"

namespace zolmara {

struct TableInfo;

/// How many bytes of amounts one band holds, however wide and long a table is; a row at least.
inline constexpr std::size_t kBandBytes = std::size_t{1} << 18;

/// Gives the numbers of a row, until the next row.
using RowNumbers = std::function<void(std::span<const double> numbers)>;

/// A table in the file.
class SpooledTable {
public:
    SpooledTable(std::shared_ptr<UnnamedFile> file, std::uint64_t start, std::size_t rows,
                 std::size_t width);

    /// Adds a row of the width. False when the disk takes no more.
    bool Put(std::span<const double> row);

    std::size_t Rows() const { return rows_; }
    /// The most that is in memory of it at any time.
    std::size_t BytesOfBand() const { return rowsInBand_ * width_ * sizeof(double); }
    std::uint64_t Start() const { return start_; }
    /// Where the next table may begin.
    std::uint64_t End() const;
    /// Gives each row's numbers of some columns, in the order in which the rows were put.
    /// StoreError when the file cannot be read.
    void Walk(std::size_t first, std::size_t count, const RowNumbers& onRow) const;

private:
    bool WriteBand();
    std::uint64_t StartOfBand(std::size_t band) const;

    std::shared_ptr<UnnamedFile> file_;
    std::uint64_t start_;
    std::size_t width_;
    std::size_t rowsInBand_;
    std::size_t rows_;
    std::size_t put_ = 0;
    std::vector<double> band_;  ///< of the rows that are put now
};

/// As long as it lives, the amounts of a table that were read from the file once lie in a temporary
/// file, for the walks that follow. Within another one it has nothing to do. Where the system has
/// no room for them they are read from the CRF again.
class AmountSpool {
public:
    explicit AmountSpool(Database& db);
    ~AmountSpool();
    AmountSpool(const AmountSpool&) = delete;
    AmountSpool& operator=(const AmountSpool&) = delete;

    /// The table as it is now; none where it was not put, or was written to since.
    std::shared_ptr<const SpooledTable> Find(const TableInfo& table) const;
    /// For so many rows of a table that is read now; none where there is no room.
    std::unique_ptr<SpooledTable> Begin(std::size_t rows, std::size_t width);
    /// Takes a table all of whose rows were put, as they were at a version of it.
    std::shared_ptr<const SpooledTable> Keep(const TableInfo& table, std::int64_t version,
                                             std::unique_ptr<SpooledTable> spooled);
    /// The disk is full for a table: whole ones stay to be read, nothing more is put.
    void GiveUp(const SpooledTable& table);

private:
    struct Kept {
        const TableInfo* Info;
        std::int64_t Version;
        std::shared_ptr<const SpooledTable> Table;
    };

    Database& db_;
    bool mine_;
    bool full_ = false;
    std::shared_ptr<UnnamedFile> file_;
    std::uint64_t end_ = 0;
    std::map<std::string, Kept> tables_;
};

}  // namespace zolmara
