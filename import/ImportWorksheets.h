#pragma once

// Worksheets taken over whole from the source: each table is made anew and filled with the
// source's rows.

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zolmara {

/// A worksheet that the source and the open CRF both have.
struct ImportEntry {
    std::string Item;
    std::string Text;  ///< as the list shows it: "B  Part-1 (Bp1)"
};

/// What can be taken over, in the order of the list. S-1 Part I, which says whose statement it
/// is, is not among them.
std::vector<ImportEntry> ImportableWorksheets();

/// Makes the worksheet of the open CRF anew and fills it from gImportDB. False, and the reason has
/// been reported, when it could not be filled: it is empty then. A row that the open CRF refuses
/// is reported and left out. StoreError for a failure of either file. `progress` hears how many
/// rows there have been.
bool ImportWorksheet(std::string_view item,
                     const std::function<void(std::size_t rows)>& progress = {});

using ImportShow = std::function<void(const std::string& text, double part)>;

/// A row of the log of the last import: what was wrong with it.
struct ImportMessage {
    std::string Severity;  ///< "ERROR" or "Warning"
    std::string Text;
};

/// Takes over these worksheets as one batch, and holds S-2 against its schedules afterwards. `show`
/// hears which worksheet is in hand and how far the whole is, from 0 to 1. Messages go to the log
/// of kind I. Gives the items of the worksheets that could not be filled.
std::vector<std::string> ImportWorksheets(std::span<const ImportEntry> entries,
                                          const ImportShow& show = {});

/// The messages of the last import, in their order.
std::vector<ImportMessage> ImportMessages();

}  // namespace zolmara
