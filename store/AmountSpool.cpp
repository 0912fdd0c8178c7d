#include "store/AmountSpool.h"

#include <algorithm>

#include "store/DatabaseImpl.h"

namespace zolmara {

// --- A table -------------------------------------------------------------------------------

SpooledTable::SpooledTable(std::shared_ptr<UnnamedFile> file, std::uint64_t start, std::size_t rows,
                           std::size_t width)
    : file_(std::move(file)),
      start_(start),
      width_(width),
      rowsInBand_(
          std::clamp<std::size_t>(kBandBytes / sizeof(double) / std::max<std::size_t>(width, 1), 1,
                                  std::max<std::size_t>(rows, 1))),
      rows_(rows),
      band_(width_ * rowsInBand_) {}

std::uint64_t SpooledTable::StartOfBand(std::size_t band) const {
    return start_ + band * BytesOfBand();
}

std::uint64_t SpooledTable::End() const {
    return StartOfBand((rows_ + rowsInBand_ - 1) / rowsInBand_);
}

bool SpooledTable::Put(std::span<const double> row) {
    double* cell = band_.data() + put_ % rowsInBand_;
    for (const double number : row) {
        *cell = number;
        cell += rowsInBand_;
    }
    ++put_;
    const bool written = (put_ % rowsInBand_ != 0 && put_ != rows_) || WriteBand();
    if (put_ == rows_) std::vector<double>().swap(band_);
    return written;
}

/// The band of the row that was put last.
bool SpooledTable::WriteBand() {
    return !file_->Write(StartOfBand((put_ - 1) / rowsInBand_), std::as_bytes(std::span(band_)));
}

void SpooledTable::Walk(std::size_t first, std::size_t count, const RowNumbers& onRow) const {
    std::vector<double> columns(count * rowsInBand_);
    std::vector<double> row(count);
    for (std::size_t at = 0; at < rows_; ++at) {
        const std::size_t inBand = at % rowsInBand_;
        if (inBand == 0)
            file_->Read(StartOfBand(at / rowsInBand_) + first * rowsInBand_ * sizeof(double),
                        std::as_writable_bytes(std::span(columns)));
        for (std::size_t i = 0; i < count; ++i) row[i] = columns[i * rowsInBand_ + inBand];
        onRow(row);
    }
}

// --- All of them ---------------------------------------------------------------------------

AmountSpool::AmountSpool(Database& db) : db_(db), mine_(db.impl().Spool == nullptr) {
    if (mine_) db.impl().Spool = this;
}

AmountSpool::~AmountSpool() {
    if (mine_ && db_.IsOpen()) db_.impl().Spool = nullptr;
}

std::shared_ptr<const SpooledTable> AmountSpool::Find(const TableInfo& table) const {
    const auto found = tables_.find(table.Def.Name);
    if (found == tables_.end()) return nullptr;
    const Kept& kept = found->second;
    return kept.Info == &table && kept.Version == *table.Version ? kept.Table : nullptr;
}

std::unique_ptr<SpooledTable> AmountSpool::Begin(std::size_t rows, std::size_t width) {
    if (full_) return nullptr;
    try {
        if (!file_) file_ = std::make_shared<UnnamedFile>();
    } catch (const StoreError&) {
        full_ = true;
        return nullptr;
    }
    auto table = std::make_unique<SpooledTable>(file_, end_, rows, width);
    // Another table may be begun before all rows of this one are put.
    end_ = table->End();
    return table;
}

std::shared_ptr<const SpooledTable> AmountSpool::Keep(const TableInfo& table, std::int64_t version,
                                                      std::unique_ptr<SpooledTable> spooled) {
    Kept& kept = tables_[table.Def.Name];
    kept = {&table, version, std::move(spooled)};
    return kept.Table;
}

void AmountSpool::GiveUp(const SpooledTable& table) {
    full_ = true;
    if (file_ && table.End() == end_) file_->CutAt(end_ = table.Start());
}

}  // namespace zolmara
