#pragma once

// What the helper cells of a workbook come to, by the evaluator of the explanations. Each share is
// worked out once, line by line.

#include <map>

#include "spreadsheet/BookLayout.h"
#include "worksheets/Evaluator.h"

namespace zolmara {

class HelperValues {
public:
    /// Of the open CRF as it stands.
    explicit HelperValues(const BookLayout& layout);

    double Of(const ClosedColumn& column, Helper helper) const;

private:
    /// The shares of a column on one sheet.
    struct Column {
        double Got = 0;
        double Largest = 0;
        int Place = 0;  ///< the row of the largest; 0 where no line shares
        double Want = 0;
        int Taker = 0;
        double Difference = 0;

        bool Any() const { return Place != 0; }
    };
    void GatherSheet(const SheetLayout& sheet);
    void Close(const SheetLayout& sheet, const ClosedColumn& closed, Evaluator& walker);

    const BookLayout& layout_;
    std::map<const ClosedColumn*, Column> columns_;
};

}  // namespace zolmara
