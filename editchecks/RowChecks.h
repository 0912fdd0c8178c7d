#pragma once

// Checks that look at one row at a time, told as tables: a section of the catalogue is a
// statement, the text its messages begin with, and the checks made on each of its rows.

#include <span>
#include <string>
#include <string_view>

#include "store/Dao.h"

namespace zolmara {

enum class Severity { NonFatal, Potential };

struct RowCheck {
    std::string_view Code;
    std::string_view Message;  ///< "{line}" stands for the row's key
    bool (*Fails)(const Recordset& row);
};

struct Section {
    std::string_view Prefix;
    std::string_view Statement;
    std::span<const RowCheck> Checks;
    Severity Level = Severity::NonFatal;
};

/// Reports every check of the section that fails on a row; on all of the section's rows.
void CheckRow(const Section& section, const Recordset& row);
void RunSection(const Section& section);

void AddFinding(Severity level, std::string_view code, std::string_view message);

/// The message with a name in braces replaced, wherever it stands.
std::string Fill(std::string_view message, std::string_view name, std::string_view with);

}  // namespace zolmara
