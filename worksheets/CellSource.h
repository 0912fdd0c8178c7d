#pragma once

// Where the cells that a description speaks of are read from: the open CRF, or whatever else
// holds a statement.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/Variant.h"
#include "worksheets/CellDescription.h"

namespace zolmara {

class CellSource {
public:
    virtual ~CellSource() = default;

    /// The lines of a worksheet, in their order; none for a table that is not there.
    virtual const std::vector<Currency>& Lines(const std::string& item) = 0;
    /// Its fields, in their order, the line number first.
    virtual const std::vector<std::string>& Fields(const std::string& item) = 0;
    /// A cell; Null where there is none.
    virtual Variant Value(const CellRef& cell) = 0;
    /// A column of the worksheet will be read on many lines.
    virtual void Expect(const std::string& item, const std::string& field) {
        (void)item;
        (void)field;
    }
};

/// The open CRF as it stands now. What was read once is not read again: make a new one after a
/// change.
class StoreCells : public CellSource {
public:
    StoreCells();
    ~StoreCells() override;
    StoreCells(const StoreCells&) = delete;
    StoreCells& operator=(const StoreCells&) = delete;

    const std::vector<Currency>& Lines(const std::string& item) override;
    const std::vector<std::string>& Fields(const std::string& item) override;
    Variant Value(const CellRef& cell) override;
    void Expect(const std::string& item, const std::string& field) override;
    /// Reads a whole worksheet, when most of its cells will be asked for.
    void ReadAll(const std::string& item);

private:
    struct Sheet;
    struct Cache;
    Sheet& SheetOf(const std::string& item);
    std::unique_ptr<Cache> cache_;
};

}  // namespace zolmara
