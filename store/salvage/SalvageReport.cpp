#include "store/salvage/SalvageReport.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <map>

namespace zolmara::salvage {
namespace {

constexpr std::int64_t kLowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kHighest = std::numeric_limits<std::int64_t>::max();

// Rows missing between two rows that were read.
struct Hole {
    std::uint64_t Rows = 0;
    bool Exact = true;
    bool Endless = false;       // nothing tells where the table ended
    std::vector<double> Lines;  // of the missing rows, where the index tells them
};

// By the position of the row that follows.
using Holes = std::map<std::size_t, Hole>;

std::size_t FirstBehind(const std::vector<RowPlace>& rows, std::int64_t rowId) {
    const auto found =
        std::upper_bound(rows.begin(), rows.end(), rowId,
                         [](std::int64_t value, const RowPlace& row) { return value < row.RowId; });
    return static_cast<std::size_t>(found - rows.begin());
}

// A complete index whose word holds for every row that was read.
bool IndexIsTrusted(const TableRows& table) {
    return table.Index.Column >= 0 && table.Index.Complete &&
           std::all_of(table.Rows.begin(), table.Rows.end(),
                       [](const RowPlace& row) { return row.Confirmed; });
}

Holes HolesByIndex(const TableRows& table) {
    Holes holes;
    for (const auto& [rowId, key] : table.Index.Keys) {
        const std::size_t next = FirstBehind(table.Rows, rowId);
        if (next > 0 && table.Rows[next - 1].RowId == rowId) continue;
        Hole& hole = holes[next];
        ++hole.Rows;
        const bool tellsLine = table.Shape.HasLineNum && table.Index.Column == 0 && key.IsNumber();
        if (tellsLine) hole.Lines.push_back(key.Number());
    }
    return holes;
}

// The part of a gap that lies just before the row at position `next`. Rowids begin at 1.
void AddPart(const TableRows& table, const Gap& gap, std::size_t next, Holes& holes) {
    const auto& rows = table.Rows;
    const std::int64_t low = std::max(gap.Range.After, next > 0 ? rows[next - 1].RowId : kLowest);
    const std::int64_t high =
        std::min(gap.Range.UpTo, next < rows.size() ? rows[next].RowId - 1 : kHighest);
    const std::int64_t from = low == kLowest ? std::min<std::int64_t>(0, high) : low;
    if (high <= from) return;
    const auto room = static_cast<std::uint64_t>(high) - static_cast<std::uint64_t>(from);
    Hole& hole = holes[next];
    hole.Endless |= high == kHighest && !gap.Rows;
    hole.Exact &= gap.Rows.has_value();
    const std::uint64_t rowsHere = gap.Rows ? std::min<std::uint64_t>(room, *gap.Rows) : room;
    if (!hole.Endless) hole.Rows += std::min(rowsHere, static_cast<std::uint64_t>(kHighest) / 2);
}

Holes HolesByGaps(const TableRows& table) {
    Holes holes;
    for (const auto& gap : table.Gaps) {
        for (std::size_t next = FirstBehind(table.Rows, gap.Range.After);; ++next) {
            AddPart(table, gap, next, holes);
            if (next >= table.Rows.size() || table.Rows[next].RowId >= gap.Range.UpTo) break;
        }
    }
    return holes;
}

std::string CountText(const Hole& hole) {
    if (hole.Endless) return "rows";
    const std::string count = fmt::format("{} {}", hole.Rows, hole.Rows == 1 ? "row" : "rows");
    return hole.Exact ? count : "about " + count;
}

std::string LinesText(const Hole& hole) {
    const auto [low, high] = std::minmax_element(hole.Lines.begin(), hole.Lines.end());
    if (*low == *high) return fmt::format(" on line {}", LineText(*low));
    return fmt::format(" from line {} to line {}", LineText(*low), LineText(*high));
}

std::string BetweenText(const TableRows& table, std::size_t next) {
    const auto& rows = table.Rows;
    const bool before = next > 0;
    const bool behind = next < rows.size();
    const auto text = [&](std::size_t at) { return RowText(table.Shape, rows[at]); };
    if (before && behind) return fmt::format(" between {} and {}", text(next - 1), text(next));
    if (before) return " after " + text(next - 1);
    return behind ? " before " + text(next) : "";
}

std::string HoleText(const TableRows& table, std::size_t next, const Hole& hole) {
    const std::string title = TitleOf(table.Shape);
    if (table.Rows.empty() && hole.Lines.empty()) {
        if (hole.Endless) return title + ": none of its rows could be read.";
        return fmt::format("{}: none of its rows could be read ({}).", title, CountText(hole));
    }
    const std::string place = hole.Lines.empty() ? BetweenText(table, next) : LinesText(hole);
    return fmt::format("{}: {}{}{} could not be read.", title, CountText(hole), place,
                       hole.Endless ? ", if there were any," : "");
}

std::string Joined(const std::vector<std::string>& names) {
    std::string joined;
    for (const auto& name : names) joined += (joined.empty() ? "" : " or ") + name;
    return joined;
}

}  // namespace

std::string LineText(double line) {
    std::string text = fmt::format("{:.4f}", line);
    text.erase(text.find_last_not_of('0') + 1);
    const std::size_t decimals = text.size() - text.find('.') - 1;
    if (decimals == 0) return text.substr(0, text.size() - 1);
    return decimals == 1 ? text + "0" : text;
}

std::string TitleOf(const TableShape& table) {
    return (table.HasLineNum ? "Worksheet table " : "Table ") + table.Name;
}

std::string RowText(const TableShape& table, const RowPlace& row) {
    return table.HasLineNum ? "line " + LineText(row.LineNum) : fmt::format("row {}", row.RowId);
}

std::vector<std::string> MissingRows(const TableRows& table) {
    std::vector<std::string> sentences;
    const Holes holes = IndexIsTrusted(table) ? HolesByIndex(table) : HolesByGaps(table);
    for (const auto& [next, hole] : holes) sentences.push_back(HoleText(table, next, hole));
    return sentences;
}

std::string MissingDefinitions(const TableRows& schema, const std::vector<std::string>& names) {
    std::uint64_t rows = 0;
    bool endless = false;
    for (const auto& [next, hole] : HolesByGaps(schema)) {
        rows += hole.Rows;
        endless |= hole.Endless;
    }
    if (rows == 0 && !endless) return "";
    const std::string found = fmt::format("{} tables were found", names.size());
    if (rows == 0) return "The file's list of tables could not be read to its end; " + found + ".";
    return fmt::format(
        "Table definitions lost: about {} {} in the file's list of tables and indexes could not be "
        "read; {}.",
        rows, rows == 1 ? "entry" : "entries", found);
}

std::string Listed(const std::vector<std::string>& rows) {
    constexpr std::size_t kMostNamed = 10;
    std::string list;
    for (std::size_t i = 0; i < std::min(rows.size(), kMostNamed); ++i) {
        list += (list.empty() ? "" : ", ") + rows[i];
    }
    if (rows.size() <= kMostNamed) return list;
    return list + " and " + std::to_string(rows.size() - kMostNamed) + " more";
}

std::string LeftoverText(const Leftover& left) {
    const std::string may =
        left.MayBelongTo.empty() ? "" : " (they may belong to " + Joined(left.MayBelongTo) + ")";
    return fmt::format(
        "{} {} of {} fields {} found on loose pages, but cannot be told to belong to one table{}; "
        "they were left out.",
        left.Rows, left.Rows == 1 ? "row" : "rows", left.Columns, left.Rows == 1 ? "was" : "were",
        may);
}

}  // namespace zolmara::salvage
