#include "bench/LargeStatement.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>

#include "core/Globals.h"

namespace zolmara::bench {

namespace {

constexpr int kFirstAdded = 29;
constexpr int kLastWhole = 98;
constexpr int kPartLines = 50;
constexpr int kUngrouped = 28;  ///< interest income: nothing is keyed on it in A

/// A small generator of its own, so that a shape gives the same file on every machine.
class Numbers {
public:
    std::uint64_t Below(std::uint64_t limit) {
        state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
        return (state_ >> 33) % limit;
    }
    bool Hits(int perMille) { return Below(1000) < static_cast<std::uint64_t>(perMille); }

private:
    std::uint64_t state_ = 20230930;
};

class Writer {
public:
    explicit Writer(std::ostream& out) : out_(out) {}

    void Cell(std::string_view worksheet, Currency row, Currency column,
              const std::string& contents) {
        out_ << worksheet << '\t' << NumberText(row) << '\t' << NumberText(column) << '\t'
             << contents << '\n';
        ++lines_;
    }
    void Cell(std::string_view worksheet, Currency row, int column, const std::string& contents) {
        Cell(worksheet, row, Currency::FromWhole(column), contents);
    }
    void Amount(std::string_view worksheet, Currency row, Currency column, std::uint64_t amount) {
        Cell(worksheet, row, column, fmt::format("{}", amount));
    }
    std::size_t Lines() const { return lines_; }

private:
    std::ostream& out_;
    std::size_t lines_ = 0;
};

Currency Subscript(int whole, int subscript) {
    return Currency::FromWhole(whole) + Currency::FromUnits(subscript * kSubscriptStep.Units());
}

std::vector<int> FormLines() {
    std::vector<int> lines;
    for (int line = 1; line <= 28; ++line)
        if (line != 3 && line != 7) lines.push_back(line);
    return lines;
}

bool IsCapital(Currency line) { return line < Currency::FromWhole(3); }
bool IsNonCapital(Currency line) { return line > Currency::FromWhole(7); }
bool IsFormLine(Currency line) { return line.IsWhole() && line.Whole() < kFirstAdded; }
bool IsInterestIncome(Currency line) { return line.Whole() == kUngrouped; }

void WriteCostCenters(Writer& file, const std::vector<Currency>& costCenters) {
    for (const Currency line : costCenters) {
        if (!IsFormLine(line))
            file.Cell("COSTCENTER", line, 0, fmt::format("Cost Center {}", NumberText(line)));
        if (IsNonCapital(line) || (IsCapital(line) && !IsFormLine(line))) {
            file.Cell("COSTCENTER", line, 4, "Hours");
            file.Cell("COSTCENTER", line, 5, "Worked");
        }
        if (IsCapital(line) && !IsFormLine(line)) file.Cell("COSTCENTER", line, 6, "3");
    }
}

void WriteComponents(Writer& file, const LargeShape& shape, int part) {
    const std::string table = fmt::format("S2p{}", part);
    int number = 0;
    for (const Currency line : LargeComponents(shape, part)) {
        ++number;
        file.Cell(table, line, 1, fmt::format("Component {}-{}", part, number));
        if (part != 2)
            file.Cell(table, line, 2, fmt::format("{}-{:04}", 10 + part * 10, number % 10000));
    }
}

void WriteExpenses(Writer& file, Numbers& numbers, const std::vector<Currency>& costCenters) {
    for (const Currency line : costCenters)
        if (!IsInterestIncome(line))
            file.Amount("A", line, kWholeStep, 5'000'000 + numbers.Below(1'000'000));
    for (const Currency line : costCenters)
        if (IsCapital(line))
            file.Amount("A7p2", line, kWholeStep, 1'000'000 + numbers.Below(500'000));
}

struct Schedule {
    std::string_view Family;
    bool (*Has)(Currency costCenter);
    bool Statistics;
};

bool BelowSeven(Currency line) { return !IsNonCapital(line) && line <= Currency::FromWhole(6); }

constexpr Schedule kSchedules[] = {{"Bp", BelowSeven, false},
                                   {"B1p", IsNonCapital, false},
                                   {"C1p", IsCapital, true},
                                   {"D1p", IsNonCapital, true}};

void WriteSchedule(Writer& file, Numbers& numbers, const LargeShape& shape,
                   const Schedule& schedule, int part, const std::vector<Currency>& costCenters) {
    const std::string table = fmt::format("{}{}", schedule.Family, part);
    const int perMille = schedule.Statistics ? shape.FilledPerMille : shape.DirectPerMille;
    for (const Currency row : LargeComponents(shape, part))
        for (const Currency column : costCenters)
            if (schedule.Has(column) && numbers.Hits(perMille))
                file.Amount(table, row, column, 1 + numbers.Below(9'999));
    if (!schedule.Statistics || part != 3) return;
    for (const Currency column : costCenters)
        if (schedule.Has(column))
            file.Amount(table, Currency::FromWhole(53), column, 1'000'000 + numbers.Below(99'999));
}

void WritePooledStatistics(Writer& file, Numbers& numbers, const LargeShape& shape, int part) {
    const std::string table = fmt::format("E1p{}", part);
    for (const Currency row : LargeComponents(shape, part))
        file.Amount(table, row, kWholeStep, 10'000 + numbers.Below(90'000));
}

}  // namespace

std::vector<Currency> LargeCostCenters(const LargeShape& shape) {
    std::vector<int> groups = FormLines();
    const int added = std::max(0, shape.CostCenters - static_cast<int>(groups.size()));
    const int wholes = std::min(kLastWhole - kFirstAdded + 1, added * 2 / 5);
    for (int i = 0; i < wholes; ++i) groups.push_back(kFirstAdded + i);

    std::vector<Currency> lines;
    for (const int group : groups) lines.push_back(Currency::FromWhole(group));
    for (int left = added - wholes, subscript = 1; left > 0 && subscript <= 99; ++subscript)
        for (std::size_t i = 0; i < groups.size() && left > 0; ++i, --left)
            lines.push_back(Subscript(groups[i], subscript));
    std::ranges::sort(lines);
    return lines;
}

std::vector<Currency> LargeComponents(const LargeShape& shape, int part) {
    const int rows = shape.Components / 3 + (part <= shape.Components % 3 ? 1 : 0);
    std::vector<Currency> lines;
    for (int group = 0; group < kPartLines; ++group) {
        const int size = rows / kPartLines + (group < rows % kPartLines ? 1 : 0);
        for (int subscript = 0; subscript < size; ++subscript)
            lines.push_back(Subscript(group + 1, subscript));
    }
    return lines;
}

std::size_t WriteLargeStatement(std::ostream& out, const LargeShape& shape) {
    Writer file(out);
    Numbers numbers;
    const auto costCenters = LargeCostCenters(shape);
    WriteCostCenters(file, costCenters);
    for (int part = 1; part <= 3; ++part) WriteComponents(file, shape, part);
    WriteExpenses(file, numbers, costCenters);
    for (const Schedule& schedule : kSchedules)
        for (int part = 1; part <= 3; ++part)
            WriteSchedule(file, numbers, shape, schedule, part, costCenters);
    for (int part = 1; part <= 3; ++part) WritePooledStatistics(file, numbers, shape, part);
    return file.Lines();
}

}  // namespace zolmara::bench
