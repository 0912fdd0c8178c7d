#pragma once

// What the helper cells of a sheet come to, by the evaluator of the explanations.

#include <array>
#include <map>

#include "spreadsheet/BookLayout.h"
#include "worksheets/Evaluator.h"

namespace zolmara {

class HelperValues {
public:
    /// Of the open CRF as it stands.
    explicit HelperValues(const SheetLayout& sheet);

    double Of(const ClosedColumn& column, Helper helper) const;

private:
    void Gather(const ClosedColumn& column, Evaluator& walker);

    const SheetLayout& sheet_;
    std::map<const ClosedColumn*, std::array<double, kHelpers>> values_;
};

}  // namespace zolmara
