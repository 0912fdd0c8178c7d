#include "import/S2Agreement.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <set>
#include <vector>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "store/session/Session.h"
#include "structure/modAddS2.h"

namespace zolmara {
namespace {

/// What the schedules hold of a name and of a number.
constexpr std::size_t kLabelSize = 40;
constexpr int kParts = 3;

struct Component {
    std::string Name;
    std::string Number;
    friend bool operator==(const Component&, const Component&) = default;
};
using Components = std::map<Currency, Component>;

std::string Label(const Variant& value) { return std::string(LeftText(StrOr(value), kLabelSize)); }

Components ReadComponents(const std::string& table, std::string_view name,
                          std::string_view number) {
    Components components;
    Recordset rows = gDB.OpenRecordset(
        fmt::format("SELECT LineNum, {}, {} FROM {} WHERE LineNum<51;", name, number, table),
        dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext())
        components[CurOr(rows[0])] = {Label(rows[1]), Label(rows[2])};
    return components;
}

std::string Shown(const Component& component) {
    std::string text = fmt::format("\"{}\"", component.Name);
    if (!component.Number.empty()) text += fmt::format(" ({})", component.Number);
    return text;
}

/// What is wrong with one line, by the schedules that have it so.
struct LineFindings {
    std::vector<std::string> Missing;
    std::vector<std::string> Unknown;
    std::map<std::string, std::vector<std::string>> Renamed;  ///< by what they call it
};

class Part {
public:
    explicit Part(int part) {
        const auto tables = ComponentTables(part);
        s2_ = tables.front();
        if (!gDB.HasTable(s2_)) return;
        components_ = ReadComponents(s2_, "Col_1", "Col_2");
        for (std::size_t i = 1; i < tables.size(); ++i)
            if (gDB.HasTable(tables[i])) Hold(tables[i]);
    }

    std::size_t Report() const {
        std::size_t count = 0;
        for (const auto& [line, found] : findings_) {
            MsgOrLog(TextOf(line, found), kExclamation, "S-2 And Its Schedules");
            ++count;
        }
        return count;
    }

private:
    void Hold(const std::string& schedule) {
        const Components rows = ReadComponents(schedule, "Description", "Col_0");
        for (const auto& [line, component] : components_) {
            const auto row = rows.find(line);
            if (row == rows.end())
                findings_[line].Missing.push_back(schedule);
            else if (row->second != component)
                findings_[line].Renamed[Shown(row->second)].push_back(schedule);
        }
        for (const auto& [line, row] : rows)
            if (!components_.contains(line)) findings_[line].Unknown.push_back(schedule);
    }

    std::string TextOf(Currency line, const LineFindings& found) const {
        const std::string number = NumberText(line);
        if (!found.Unknown.empty())
            return fmt::format("Line {} of {} is not on {}.", number,
                               fmt::join(found.Unknown, ", "), s2_);
        std::string text =
            fmt::format("Line {} of {}, {}, is", number, s2_, Shown(components_.at(line)));
        std::string_view joint = " ";
        if (!found.Missing.empty()) {
            text += fmt::format(" missing from {}", fmt::join(found.Missing, ", "));
            joint = ", and is ";
        }
        for (const auto& [name, tables] : found.Renamed) {
            text += fmt::format("{}{} on {}", joint, name, fmt::join(tables, ", "));
            joint = ", and is ";
        }
        return text + ".";
    }

    std::string s2_;
    Components components_;
    std::map<Currency, LineFindings> findings_;
};

}  // namespace

std::size_t CompareS2WithSchedules(int part) { return Part(part).Report(); }

std::size_t CompareS2WithSchedules(std::span<const std::string> items) {
    std::size_t count = 0;
    for (int part = 1; part <= kParts; ++part) {
        const auto tables = ComponentTables(part);
        const auto ofPart = [&](const std::string& item) {
            return std::ranges::any_of(
                tables, [&](const std::string& table) { return SameText(table, item); });
        };
        if (std::ranges::any_of(items, ofPart)) count += CompareS2WithSchedules(part);
    }
    return count;
}

}  // namespace zolmara
