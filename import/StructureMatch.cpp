#include "import/StructureMatch.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "core/Globals.h"
#include "structure/modAddS2.h"

namespace zolmara {
namespace {

constexpr int kParts = 3;
constexpr std::array<std::string_view, 3> kByCostCenter = {"CostCenters", "A", "A7p2"};

std::string Trimmed(const Variant& value) { return std::string(Trim(StrOr(value))); }

bool SameNumber(const Entity& a, const Entity& b) {
    return !a.Number.empty() && a.Number == b.Number;
}
bool SameName(const Entity& a, const Entity& b) {
    const bool differ = !a.Number.empty() && !b.Number.empty() && a.Number != b.Number;
    return !differ && !a.Name.empty() && SameText(a.Name, b.Name);
}
bool SamePlace(const Entity& a, const Entity& b) {
    return a.Line == b.Line && (SameNumber(a, b) || SameName(a, b));
}
/// Renamed where it stands; two numbers that differ are two components.
bool Renamed(const Entity& a, const Entity& b) {
    return a.Line == b.Line && (a.Number.empty() || b.Number.empty());
}

std::vector<Entity> ReadEntities(Database& db, const std::string& table, std::string_view name,
                                 std::string_view number) {
    std::vector<Entity> entities;
    if (!db.HasTable(table)) return entities;
    Recordset rows = db.OpenRecordset(
        fmt::format("SELECT LineNum, {}, {} FROM {} ORDER BY LineNum;", name, number, table),
        dbOpenSnapshot);
    for (; !rows.Eof(); rows.MoveNext())
        entities.push_back({CurOr(rows[0]), Trimmed(rows[1]), Trimmed(rows[2])});
    return entities;
}

std::vector<Entity> ReadCostCenters(Database& db) {
    std::vector<Entity> entities = ReadEntities(db, "CostCenters", "CCName", "CCName");
    for (Entity& entity : entities) entity.Number.clear();
    return entities;
}

std::vector<Entity> ReadComponents(Database& db, int part) {
    return ReadEntities(db, fmt::format("S2p{}", part), "Col_1", "Col_2");
}

std::string NameIn(const std::map<Currency, std::string>& names, Currency line) {
    const auto found = names.find(line);
    return found == names.end() ? std::string() : found->second;
}

/// What a step of the matching looks for, so that no pair of lists is walked crosswise.
std::string KeyOf(const Entity& entity, bool (*same)(const Entity&, const Entity&)) {
    if (same == SameNumber) return entity.Number;
    if (same == SameName) return UCase(entity.Name);
    return NumberText(entity.Line);
}

}  // namespace

LineMatch::LineMatch(const std::vector<Entity>& here, const std::vector<Entity>& there) {
    for (const Entity& entity : here) namesHere_[entity.Line] = entity.Name;
    for (const Entity& entity : there) namesThere_[entity.Line] = entity.Name;
    for (const auto same : {SamePlace, SameNumber, SameName, Renamed}) Match(here, there, same);
}

void LineMatch::Match(const std::vector<Entity>& here, const std::vector<Entity>& there,
                      bool (*same)(const Entity&, const Entity&)) {
    std::multimap<std::string, const Entity*> free;
    for (const Entity& entity : there)
        if (!taken_[entity.Line]) free.emplace(KeyOf(entity, same), &entity);
    for (const Entity& entity : here) {
        if (there_.contains(entity.Line)) continue;
        const auto [from, to] = free.equal_range(KeyOf(entity, same));
        const auto found =
            std::find_if(from, to, [&](const auto& each) { return same(entity, *each.second); });
        if (found == to) continue;
        there_[entity.Line] = found->second->Line;
        taken_[found->second->Line] = true;
        free.erase(found);
    }
}

std::optional<Currency> LineMatch::There(Currency here) const {
    const auto found = there_.find(here);
    if (found != there_.end()) return found->second;
    if (namesHere_.contains(here)) return std::nullopt;
    return here;
}

std::string LineMatch::NameHere(Currency line) const { return NameIn(namesHere_, line); }
std::string LineMatch::NameThere(Currency line) const { return NameIn(namesThere_, line); }

StructureMatch::StructureMatch(Database& here, Database& there)
    : CostCenters(ReadCostCenters(here), ReadCostCenters(there)) {
    for (int part = 1; part <= kParts; ++part)
        Components.emplace_back(ReadComponents(here, part), ReadComponents(there, part));
}

const LineMatch* StructureMatch::RowsOf(std::string_view table) const {
    const auto isTable = [&](std::string_view each) { return SameText(each, table); };
    if (std::ranges::any_of(kByCostCenter, isTable)) return &CostCenters;
    for (int part = 1; part <= kParts; ++part)
        if (std::ranges::any_of(ComponentTables(part), isTable))
            return &Components.at(static_cast<std::size_t>(part - 1));
    return nullptr;
}

}  // namespace zolmara
