#include "import/Staging.h"

#include <cmath>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "store/session/Session.h"

namespace zolmara {

namespace {

constexpr int kNameSize = 20;
constexpr int kContentsSize = 255;

void MakeStagingTable() {
    gDB.AppendTable({.Name = "ImportASCII",
                     .Fields = {{.Name = "WorkSheet", .Type = FieldType::dbText, .Size = kNameSize},
                                {.Name = "Row", .Type = FieldType::dbDouble},
                                {.Name = "Col", .Type = FieldType::dbDouble},
                                {.Name = "Contents",
                                 .Type = FieldType::dbText,
                                 .Size = kContentsSize,
                                 .AllowZeroLength = true}},
                     .Indexes = {}});
    gDB.RefreshTableDefs();
}

bool TryStore(void (*work)()) {
    try {
        work();
        return true;
    } catch (const StoreError&) {
        return false;
    }
}

bool FirstStands(const ImportLine& line) {
    return line.WorkSheet == "A8" && line.Col == Currency::FromWhole(4);
}

}  // namespace

bool PrepareStaging() {
    if (TryStore([] { gDB.Execute("Delete From ImportASCII;"); })) return true;
    if (TryStore(MakeStagingTable)) return true;
    TheDialogs().MsgBox("Unable to build import table.", kCritical,
                        "Error Creating Table ImportASCII");
    return false;
}

Staging::Staging() : rows_(gDB.OpenRecordset("Select * From ImportASCII;")) {}

std::size_t Staging::Hash::operator()(const Key& key) const {
    std::uint64_t hash = 0;
    for (auto part : {key.Sheet, key.Row, key.Col})
        hash = (hash ^ static_cast<std::uint64_t>(part)) * 0x9E3779B97F4A7C15u;
    return hash ^ (hash >> 32);
}

/// Names that differ in case alone are one worksheet.
std::int64_t Staging::SheetNumber(const std::string& name) {
    const auto next = static_cast<std::int64_t>(sheets_.size());
    if (const auto known = sheets_.find(name); known != sheets_.end()) return known->second;
    const auto number = sheets_.try_emplace(UCase(name), next).first->second;
    return sheets_.try_emplace(name, number).first->second;
}

bool Staging::Add(const ImportLine& line) {
    const Key key{SheetNumber(line.WorkSheet), line.Row.Units(), line.Col.Units()};
    if (const auto found = marks_.find(key); found != marks_.end()) {
        rows_.SetBookmark(found->second);
        return Merge(line);
    }
    AddRow(line);
    marks_.emplace(key, rows_.LastModified());
    return true;
}

void Staging::AddRow(const ImportLine& line) {
    rows_.AddNew();
    rows_.Set(0, line.WorkSheet);
    rows_.Set(1, line.Row.ToDouble());
    rows_.Set(2, line.Col.ToDouble());
    rows_.Set(3, line.Contents);
    rows_.Update();
}

bool Staging::Merge(const ImportLine& line) {
    auto contents = line.Contents;
    const auto before = ParseNumber(StrOr(rows_[3]));
    const auto now = ParseNumber(line.Contents);
    if (before && now) {
        if (FirstStands(line)) return true;
        const double sum = 0 + *before + *now;
        if (!std::isfinite(sum)) return false;
        contents = NumberText(sum);
    }
    if (TextLength(contents) > kContentsSize) return false;
    rows_.Edit();
    rows_.Set(3, contents);
    rows_.Update();
    return true;
}

}  // namespace zolmara
