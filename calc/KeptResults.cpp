#include "calc/KeptResults.h"

#include <algorithm>
#include <utility>

#include "store/session/Session.h"

namespace zolmara {

KeptResults& KeptResults::OfOpenCrf() {
    std::shared_ptr<void>& attached = AttachedTo(gDB);
    if (!attached) attached = std::make_shared<KeptResults>();
    return *static_cast<KeptResults*>(attached.get());
}

void KeptResults::BeginRun(bool alone) {
    changed_.clear();
    alone_ = alone;
}

std::int64_t KeptResults::MadeAt(const WriteCount& table, std::int64_t writes) const {
    const auto found = contents_.find(table);
    return found != contents_.end() && found->second.Writes == writes ? found->second.Made : writes;
}

bool KeptResults::Stands(const std::string& first) const {
    const auto found = results_.find(first);
    if (found == results_.end() || found->second.Spoke) return false;
    return std::ranges::all_of(found->second.Inputs, [&](const Input& input) {
        return MadeAt(input.Table, *input.Table) == input.Made;
    });
}

KeptColumns KeptResults::TakeColumns(const std::string& first) {
    const auto found = results_.find(first);
    if (found == results_.end()) return {};
    KeptColumns columns = std::exchange(found->second.Columns, {});
    columns.Begin();
    return columns;
}

void KeptResults::Keep(const std::string& first, const TableWatch& watch, KeptColumns columns,
                       bool spoke) {
    Result result{{}, std::move(columns), spoke};
    for (const TableWatch::Use& use : watch.Tables()) {
        const std::int64_t made = MadeAt(use.Writes, use.WritesBefore);
        result.Inputs.push_back({use.Writes, made});
        if (*use.Writes == use.WritesBefore) continue;
        // The batch knows what a table was at its beginning, and so ahead of these worksheets only
        // where none before it in the run has changed the table.
        if (alone_ && !changed_.contains(use.Writes) && !ChangedInBatch(gDB, use.Table))
            contents_[use.Writes] = {*use.Writes, made};
        else
            changed_.insert(use.Writes);
    }
    results_[first] = std::move(result);
}

/// The end of a batch counts as a write to its tables where what it wrote is taken back because it
/// has changed nothing. The tables hold what they held ahead of it.
void KeptResults::EndRun() {
    std::map<WriteCount, Content> now;
    for (const auto& [item, result] : results_)
        for (const Input& input : result.Inputs)
            now[input.Table] = {*input.Table, MadeAt(input.Table, *input.Table)};
    contents_ = std::move(now);
}

void KeptResults::AfterBatch() {
    for (auto& [table, content] : contents_) content.Writes = *table;
}

void KeptResults::Forget() {
    results_.clear();
    contents_.clear();
}

}  // namespace zolmara
