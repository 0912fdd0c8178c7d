#include "import/StagedRows.h"

#include <algorithm>
#include <span>
#include <tuple>

#include "core/Globals.h"
#include "store/RowWalk.h"
#include "store/session/Session.h"

namespace zolmara {

namespace {

auto PlaceOf(const SourceRow& row) { return std::tuple(row.Row, row.Col); }

}  // namespace

void StagedRows::Read() {
    names_.clear();
    rows_.clear();
    bucketOf_.clear();
    WalkRows(
        gDB, "SELECT WorkSheet, Row, Col, Contents From ImportASCII;",
        [&](std::span<const Variant> row) {
            rows_[BucketOf(StrOr(row[0]))].push_back({CurOr(row[1]), CurOr(row[2]), StrOr(row[3])});
        });
    for (auto& rows : rows_)
        if (!std::ranges::is_sorted(rows, {}, PlaceOf)) std::ranges::stable_sort(rows, {}, PlaceOf);
}

/// Names that differ in case alone are one worksheet.
std::size_t StagedRows::BucketOf(const std::string& name) {
    if (const auto known = bucketOf_.find(name); known != bucketOf_.end()) return known->second;
    const auto [place, isNew] = bucketOf_.try_emplace(UCase(name), names_.size());
    const std::size_t bucket = place->second;
    if (isNew) {
        names_.push_back(place->first);
        rows_.emplace_back();
    }
    bucketOf_.try_emplace(name, bucket);
    return bucket;
}

std::vector<SourceRow> StagedRows::Take(std::string_view sheet) {
    const auto known = bucketOf_.find(UCase(sheet));
    return known == bucketOf_.end() ? std::vector<SourceRow>() : std::move(rows_[known->second]);
}

std::size_t StagedRows::Lines(std::string_view sheet) const {
    const auto known = bucketOf_.find(UCase(sheet));
    if (known == bucketOf_.end()) return 0;
    const auto& rows = rows_[known->second];
    std::size_t lines = rows.empty() ? 0 : 1;
    for (std::size_t i = 1; i < rows.size(); ++i)
        if (rows[i].Row != rows[i - 1].Row) ++lines;
    return lines;
}

}  // namespace zolmara
