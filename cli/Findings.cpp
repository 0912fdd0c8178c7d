#include "cli/Findings.h"

#include <fmt/format.h>

#include "cli/Output.h"
#include "core/Globals.h"
#include "editchecks/ComparedFigures.h"
#include "store/session/Session.h"
#include "worksheets/Explain.h"

namespace zolmara::cli {

namespace {

std::string ComparisonText(const Comparison& compared) {
    return fmt::format("    {}: {}; {}: {}; difference {}", SideText(compared.Left),
                       Figure(compared.Left.Value), SideText(compared.Right),
                       Figure(compared.Right.Value), Figure(compared.Difference));
}

void AddComparison(std::vector<Variant>& row, const Comparison& compared) {
    row[3] = SideText(compared.Left);
    row[4] = compared.Left.Value;
    row[5] = SideText(compared.Right);
    row[6] = compared.Right.Value;
    row[7] = compared.Difference;
}

}  // namespace

void PrintFindings() {
    auto rows = gDB.OpenRecordset("SELECT Level, Code, Message FROM Error;");
    PrintMessages(ListingOf(rows));
}

void PrintComparedFindings() {
    Recordset rows = gDB.OpenRecordset("SELECT Level, Code, Message FROM Error;");
    Listing listing{
        {"Level", "Code", "Message", "Left", "LeftValue", "Right", "RightValue", "Difference"}, {}};
    for (; !rows.Eof(); rows.MoveNext()) {
        std::vector<Variant> row = {rows[0], rows[1], rows[2]};
        const auto compared = ComparisonOf(Text(rows[1]), Text(rows[2]));
        if (TheFormat() == OutputFormat::Text) {
            PrintMessages({{"Level", "Code", "Message"}, {row}});
            if (compared) PrintLine(ComparisonText(*compared));
            continue;
        }
        row.resize(listing.Columns.size());
        if (compared) AddComparison(row, *compared);
        listing.Rows.push_back(std::move(row));
    }
    if (TheFormat() != OutputFormat::Text) PrintListing(listing);
}

}  // namespace zolmara::cli
