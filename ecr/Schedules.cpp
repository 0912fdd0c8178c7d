#include "ecr/Schedules.h"

#include <fmt/format.h>

#include <cmath>
#include <vector>

#include "core/Fortran.h"
#include "core/Globals.h"
#include "core/Status.h"
#include "core/WholeDigits.h"
#include "ecr/Record.h"
#include "store/AmountRows.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "worksheets/Schedules.h"

namespace zolmara {
namespace {

constexpr Currency kRatioColumn = Currency::FromWhole(2);
constexpr std::size_t kColumnWidth = 5;
constexpr std::size_t kAmountWidth = 16;
constexpr std::string_view kRatio = "F16.6";

/// A column of the schedule, as it stands in every record.
struct ScheduleField {
    int Position;
    std::string Column;
    bool Ratio;
    bool IsText;
};

std::vector<ScheduleField> FieldsOf(const ScheduleEmitter& schedule, std::string_view item) {
    std::vector<ScheduleField> fields;
    const std::vector<FieldDef>& all = gDB.Table(item).Fields;
    for (int i = schedule.FirstField; i < static_cast<int>(all.size()); ++i) {
        const FieldDef& field = all[static_cast<std::size_t>(i)];
        const Currency column = ScheduleColumn(field.Name, schedule.Pooled);
        fields.push_back({i, ColumnField(column), schedule.Pooled && column == kRatioColumn,
                          field.Type == FieldType::dbText});
    }
    return fields;
}

std::vector<int> TextFieldsOf(const std::vector<ScheduleField>& fields) {
    std::vector<int> positions;
    for (const ScheduleField& field : fields)
        if (field.IsText) positions.push_back(field.Position);
    return positions;
}

/// What the records of a schedule have in common.
struct ScheduleRecords {
    const ScheduleEmitter& Schedule;
    char Part;
    std::vector<ScheduleField> Fields;
    std::size_t Width;  ///< of the table
};

/// The records of one row, put together before they are written.
class RowRecords {
public:
    RowRecords(EcrRun& run, const ScheduleRecords& schedule) : run_(run), schedule_(schedule) {}

    /// The numbers that its texts read as come in the order of these.
    void Write(Currency line, std::span<const double> row, std::span<const double> ofTexts) {
        BeginRow(line);
        const bool isUcm = schedule_.Schedule.HasUcm && line == kUnitCostMultiplier;
        auto text = ofTexts.begin();
        for (const ScheduleField& field : schedule_.Fields) {
            const double amount = field.IsText ? *text++ : row[field.Position];
            if (amount != 0 && !std::isnan(amount)) Add(field, amount, isUcm || field.Ratio);
        }
        PrintPlainLines(run_.ECRFile, lines_);
    }

private:
    void BeginRow(Currency line) {
        head_ = fmt::format("3{}{}  {}", schedule_.Schedule.Code, schedule_.Part, LineField(line));
        blank_ = head_ + std::string(kColumnWidth + kAmountWidth, ' ');
        blank_ += kLineEnd;
        lines_.clear();
    }

    void Add(const ScheduleField& field, double amount, bool ratio) {
        if (!ratio && IsWholeNumber(amount)) {
            const WholeDigits digits(amount, Thousands::Plain);
            if (digits.Size() <= kAmountWidth) return AddWhole(field, digits);
        }
        lines_.append(head_).append(field.Column);
        if (ratio)
            lines_ += Fortran(amount, kRatio, " ", false);
        else
            AppendWhole(lines_, amount, kAmountWidth);
        lines_ += kLineEnd;
    }

    /// Nearly every record: its column and its digits go into a blank one.
    void AddWhole(const ScheduleField& field, const WholeDigits& digits) {
        const std::size_t column = lines_.size() + head_.size();
        lines_ += blank_;
        field.Column.copy(lines_.data() + column, kColumnWidth);
        digits.Text().copy(lines_.data() + column + kColumnWidth + kAmountWidth - digits.Size(),
                           digits.Size());
    }

    EcrRun& run_;
    const ScheduleRecords& schedule_;
    std::string head_;
    std::string blank_;  ///< a record of this row without column and amount
    std::string lines_;
};

}  // namespace

Currency ScheduleColumn(std::string_view field, bool pooled) {
    if (!SameText(field.substr(0, 2), "CC")) return Currency(Val(MidText(field, 5)));
    const Currency line(Val(MidText(field, 4)) / 100);
    return pooled ? PoolColumn(line) : line;
}

void ECR_Schedule(EcrRun& run, const ScheduleEmitter& schedule, std::string_view item) {
    // Worksheet E has no parts.
    const char part = schedule.Family == "E" ? '0' : item.back();
    const ScheduleRecords records{schedule, part, FieldsOf(schedule, item),
                                  gDB.Table(item).Fields.size()};
    const std::vector<int> textFields = TextFieldsOf(records.Fields);
    std::vector<Currency> lines;
    std::vector<double> ofTexts;
    AmountRows rows(gDB, item, textFields, [&](const Variant& line, RowTexts texts) {
        lines.push_back(CurOr(line));
        // A text that reads as a number is one.
        for (const std::string_view text : texts) ofTexts.push_back(NumOr(text));
    });
    RowRecords record(run, records);
    std::size_t next = 0;
    rows.Walk(0, records.Width, [&](std::span<const double> row) {
        const std::size_t at = next++;
        record.Write(lines[at], row,
                     std::span(ofTexts).subspan(at * textFields.size(), textFields.size()));
        TheStatus().DoEvents();
    });
}

}  // namespace zolmara
