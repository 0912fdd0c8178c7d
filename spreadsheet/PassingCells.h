#pragma once

// The open CRF for whoever goes through lines from the first to the last: of the worksheets that
// the line at hand is read from, one row each is in memory.

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "spreadsheet/PassingRows.h"
#include "worksheets/CellSource.h"

namespace zolmara {

class PassingCells : public CellSource {
public:
    /// The line at hand. A worksheet that is behind it already gives its rows all the same, and
    /// keeps them.
    void Pass(Currency line) { line_ = line; }

    const std::vector<Currency>& Lines(const std::string& item) override {
        return others_.Lines(item);
    }
    const std::vector<std::string>& Fields(const std::string& item) override {
        return others_.Fields(item);
    }
    Variant Value(const CellRef& cell) override;

private:
    struct Sheet {
        PassingRows Rows;  ///< at the line at hand, or at the first behind it
        std::unordered_map<std::string, int> PositionOf = {};
    };
    Sheet* SheetOf(const std::string& item);

    Currency line_;
    std::map<std::string, Sheet> sheets_;
    StoreCells others_;  ///< lines that are not at hand
};

}  // namespace zolmara
