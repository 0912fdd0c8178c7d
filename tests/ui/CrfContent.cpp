#include "CrfContent.h"

#include <algorithm>
#include <sstream>
#include <vector>

#include "core/Globals.h"
#include "store/session/Session.h"
#include "worksheets/Worksheet.h"

namespace zolmara::ui {

std::string Content() {
    std::string content;
    std::vector<std::string> tables{"CostCenters", "ES"};
    for (const Worksheet& sheet : AllWorksheets()) tables.emplace_back(sheet.Item);
    for (const std::string& table : tables) {
        content += "\n[" + table + "]\n";
        Recordset rows = gDB.OpenRecordset("SELECT * FROM " + table + ";", dbOpenSnapshot);
        std::vector<std::string> lines;
        for (; !rows.Eof(); rows.MoveNext()) {
            std::string line;
            for (int field = 0; field < rows.FieldCount(); ++field)
                line += rows.FieldName(field) + "=" +
                        (rows[field].IsNull() ? "Null" : Text(rows[field])) + "|";
            lines.push_back(line);
        }
        std::ranges::sort(lines);
        for (const std::string& line : lines) content += line + "\n";
    }
    return content;
}

std::string FirstDifference(const std::string& a, const std::string& b) {
    std::istringstream first(a);
    std::istringstream second(b);
    std::string x;
    std::string y;
    while (true) {
        const bool more = static_cast<bool>(std::getline(first, x));
        if (more != static_cast<bool>(std::getline(second, y))) return x + y + " is missing";
        if (!more) return "";
        if (x != y) return x + "\n" + y;
    }
}

}  // namespace zolmara::ui
