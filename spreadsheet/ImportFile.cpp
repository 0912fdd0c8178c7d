#include "spreadsheet/ImportFile.h"

#include <fmt/format.h>

#include <filesystem>

#include "core/Globals.h"
#include "import/ImportASCII.h"
#include "spreadsheet/SheetLines.h"
#include "store/Dao.h"

namespace zolmara {

namespace {

struct Extension {
    std::string_view Name;
    SheetFileKind Kind;
};
constexpr Extension kExtensions[] = {{".xlsx", SheetFileKind::Xlsx},
                                     {".xlsm", SheetFileKind::Xlsx},
                                     {".ods", SheetFileKind::Ods},
                                     {".csv", SheetFileKind::Csv}};

}  // namespace

bool ImportFile(const std::string& path) {
    const std::string extension = LCase(std::filesystem::path(path).extension().string());
    if (extension == ".xls")
        throw StoreError(StoreError::Kind::CannotOpen,
                         fmt::format("Unable to open the import file {}: it is a workbook of the "
                                     "older kind.  Save it as .xlsx.",
                                     path));
    for (const Extension& known : kExtensions) {
        if (extension != known.Name) continue;
        SheetLines lines(path, known.Kind);
        return ImportLines(path, lines);
    }
    return ImportAsciiFile(path);
}

}  // namespace zolmara
