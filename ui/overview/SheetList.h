#pragma once

// The worksheets of the open CRF with what a list of them says.

#include <QString>
#include <QStringList>
#include <optional>
#include <string>
#include <vector>

#include "worksheets/CellDescription.h"
#include "worksheets/SheetStates.h"

namespace zolmara::ui {

struct SheetRow {
    std::string Item;  ///< as OpenWorksheet takes it
    QString Name;      ///< "A-7 Part II, Reconciliation of capital cost centers"
    std::optional<SheetState> State = {};  ///< none for what is no worksheet
    int Errors = 0;                        ///< of the last edit checks
    int Warnings = 0;
    QStringList Codes = {};  ///< of its findings

    /// "2 errors, 1 warning"; empty without a finding.
    QString FindingsText() const;
    /// Whether a filter's text stands in its name, its Item or a code of its findings, in any case.
    bool Matches(const QString& filter) const;
};

/// All worksheets by their letters, the cost centers and the bases of the pools ahead of A.
/// StoreError when the CRF cannot be read.
std::vector<SheetRow> ReadSheets();

/// The cell that stands last among those that a calculation writes: the worksheet's total. None
/// where it is keyed alone.
std::optional<CellRef> TotalOf(const std::string& item);

}  // namespace zolmara::ui
