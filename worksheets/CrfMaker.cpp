#include "worksheets/CrfMaker.h"

#include <algorithm>
#include <array>

#include "core/Globals.h"
#include "store/session/CoreTables.h"
#include "store/session/RepairCrf.h"
#include "store/session/Session.h"
#include "worksheets/Build.h"
#include "worksheets/Worksheet.h"

namespace zolmara {
namespace {

struct CoreTable {
    std::string_view Name;
    void (*Build)();
};

/// In the order of their making: all others are entered in the registry.
constexpr std::array<CoreTable, 6> kCoreTables{{{"Worksheets", Build_Worksheets},
                                                {"Log", Build_Log},
                                                {"Master", Build_Master},
                                                {"HeaderLines", Build_HeaderLines},
                                                {"CostCenters", Build_CC},
                                                {"ES", Build_ES}}};

/// The schedules take their rows from these.
constexpr std::array<std::string_view, 3> kComponentTables{"S2p1", "S2p2", "S2p3"};

template <class Names>
void MakeMissing(const Names& names, std::vector<std::string>& made) {
    for (const std::string_view name : names) {
        if (gDB.HasTable(name)) continue;
        BuildWorksheet(name);
        made.emplace_back(name);
    }
}

std::vector<std::string> MakeMissingTables() {
    std::vector<std::string> made;
    for (const auto& table : kCoreTables) {
        if (gDB.HasTable(table.Name)) continue;
        table.Build();
        made.emplace_back(table.Name);
    }
    MakeMissing(kComponentTables, made);
    if (!made.empty()) return made;
    std::vector<std::string_view> items;
    for (const auto& sheet : AllWorksheets()) items.push_back(sheet.Item);
    MakeMissing(items, made);
    return made;
}

bool HasRows(std::string_view table) { return !gDB.OpenRecordset(table, dbOpenTable).Empty(); }

/// Master has one row, which is the repair's own to fill.
void FillCoreTables() {
    for (const auto& table : kCoreTables) {
        if (table.Name == "Master" || table.Name == "Log" || HasRows(table.Name)) continue;
        gDB.DeleteTable(table.Name);
        table.Build();
    }
}

void RegisterAll() {
    const auto known = [](std::string_view item) {
        return NumOr(gDB.Scalar("SELECT Count(*) FROM Worksheets WHERE UCase(Item)=?;",
                                {UCase(item)})) > 0;
    };
    for (const auto& table : kCoreTables)
        if (table.Name != "Master" && !known(table.Name))
            RegisterWorksheet(table.Name, "Make", kNotAWorksheet);
    for (const auto& sheet : AllWorksheets())
        if (!known(sheet.Item)) RegisterBuiltWorksheet(sheet.Item);
}

void CompleteTables(const std::vector<std::string>& made) {
    FillCoreTables();
    for (const auto& name : made)
        if (FindWorksheet(name) && !HasRows(name)) BuildWorksheet(name);
    RegisterAll();
}

Variant DateOrNull(const Variant& text) {
    const auto date = DateOf(text);
    return date ? Variant(*date) : Variant();
}

Variant TextOrNull(const Variant& text, std::size_t size) {
    const std::string cut(LeftText(StrOr(text), size));
    return cut.empty() ? Variant() : Variant(cut);
}

CrfIdentity IdentityOnS1() {
    CrfIdentity identity;
    if (!gDB.HasTable("S1p1")) return identity;
    const Recordset line = gDB.OpenRecordset("SELECT * FROM S1p1 WHERE LineNum=2");
    if (line.Empty()) return identity;
    identity.ProviderName = TextOrNull(line["Col_1"], 36);
    identity.ProviderNumber = TextOrNull(line["Col_2"], 8);
    identity.FYStart = DateOrNull(line["Col_4"]);
    identity.FYEnd = DateOrNull(line["Col_5"]);
    return identity;
}

}  // namespace

void HandCrfMaker() { SetCrfMaker({MakeMissingTables, CompleteTables, IdentityOnS1}); }

}  // namespace zolmara
