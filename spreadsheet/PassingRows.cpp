#include "spreadsheet/PassingRows.h"

#include <fmt/format.h>

#include <algorithm>

#include "core/Globals.h"
#include "store/session/Session.h"

namespace zolmara {

PassingRows::PassingRows(std::string table, std::string key, const std::vector<Currency>& lines)
    : table_(std::move(table)), key_(std::move(key)), lines_(lines) {
    ReadPiece();
}

void PassingRows::ReadPiece() {
    constexpr std::size_t kPiece = 128;
    rows_.reset();
    while (!rows_ && next_ < lines_.size()) {
        const std::size_t last = std::min(next_ + kPiece, lines_.size()) - 1;
        rows_ = gDB.OpenRecordset(
            fmt::format("SELECT * FROM [{0}] WHERE {1}>=? AND {1}<=? ORDER BY {1};", table_, key_),
            {lines_[next_], lines_[last]}, dbOpenSnapshot);
        next_ = last + 1;
        if (rows_->Eof()) rows_.reset();
    }
}

void PassingRows::MoveNext() {
    rows_->MoveNext();
    if (rows_->Eof()) ReadPiece();
}

Currency PassingRows::Line() const { return CurOr((*this)[0]); }

}  // namespace zolmara
