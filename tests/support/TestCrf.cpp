#include "support/TestCrf.h"

#include <fmt/format.h>
#include <stdlib.h>
#include <unistd.h>

#include <stdexcept>

#include "worksheets/CrfMaker.h"

namespace zolmara::test {
namespace {

/// On the memory disk where there is one: bringing each write to a real disk is most of the
/// time of a test.
std::filesystem::path NewFolder() {
    const std::filesystem::path memory = "/dev/shm";
    const bool fast = access(memory.c_str(), W_OK) == 0;
    std::string name =
        ((fast ? memory : std::filesystem::temp_directory_path()) / "zolmara-XXXXXX").string();
    if (!mkdtemp(name.data())) throw std::runtime_error("No temporary folder: " + name);
    return name;
}

std::string KeyOf(std::string_view table) {
    return gDB.Table(table).FieldIndex("LineNum") >= 0 ? "LineNum" : "SeqNum";
}

}  // namespace

TempFolder::TempFolder() : path_(NewFolder()) {}

TempFolder::~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

NewCrfFields SampleFields() {
    return {"287", "12-3456", "10/1/2022", "9/30/2023", "Sample Home Office"};
}

SessionTest::SessionTest() {
    HandCrfMaker();
    DropCrf();
    gDebug = false;
    gLogType.clear();
    host.Folder = folder.Path().string();
}

SessionTest::~SessionTest() {
    gImportDB.Close();
    DropCrf();
    gDebug = false;
    gLogType.clear();
}

CoreCrf::CoreCrf() {
    MakeCoreCrf(folder.File("Core.CRF"));
    host.Forget();
}

void MakeCoreCrf(const std::string& path) {
    gDB = DBEngine::CreateDatabase(path, ";LANGID=0x0409;CP=1252;COUNTRY=0");
    SetCrfPath(path);
    gFormNum = "287";
    gFYStart = DateTime(2022, 10, 1);
    gFYEnd = DateTime(2023, 9, 30);
    gProviderNumber = "12-3456";
    gProviderName = "Sample Home Office";
    RunBatch(gDB, [] {
        Build_Worksheets();
        Build_Log();
        Build_Master();
        Build_HeaderLines();
        Build_CC();
        Build_ES();
    });
}

Variant Cell(std::string_view table, double line, std::string_view field) {
    Recordset row = gDB.OpenRecordset(
        fmt::format("SELECT [{}] FROM {} WHERE {} = ?;", field, table, KeyOf(table)),
        {Variant(Currency(line))});
    if (row.Empty()) {
        ADD_FAILURE() << "Table " << table << " has no line " << line;
        return {};
    }
    return row[0];
}

void SetCell(std::string_view table, double line, std::string_view field, const Variant& value) {
    Recordset row =
        gDB.OpenRecordset(fmt::format("SELECT * FROM {} WHERE {} = ?;", table, KeyOf(table)),
                          {Variant(Currency(line))});
    if (row.Empty()) {
        ADD_FAILURE() << "Table " << table << " has no line " << line;
        return;
    }
    row.Edit();
    row.Set(field, value);
    row.Update();
}

int Rows(std::string_view table) {
    return static_cast<int>(
        NumOr(gDB.Scalar(fmt::format("SELECT Count(*) AS Cnt FROM {};", table))));
}

}  // namespace zolmara::test
