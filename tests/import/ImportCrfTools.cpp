#include "import/ImportCrfTools.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <filesystem>

#include "worksheets/Worksheet.h"

namespace zolmara::test {
namespace {

std::string RowsOf(Database& db, std::string_view item) {
    std::string text;
    Recordset rows = db.OpenRecordset(fmt::format("SELECT * FROM [{}];", item), dbOpenSnapshot);
    for (int i = 0; i < rows.FieldCount(); ++i) text += rows.FieldName(i) + "|";
    for (; !rows.Eof(); rows.MoveNext()) {
        text += "\n";
        for (int i = 0; i < rows.FieldCount(); ++i)
            text += rows[i].IsDouble() ? fmt::format("{}|", rows[i].AsDouble())
                                       : StrOr(rows[i], "Null") + "|";
    }
    return text;
}

}  // namespace

ImportCrfTest::ImportCrfTest() {
    std::filesystem::create_directory(folderOfSource_);
    OpenFilledCopy(source_);
    gDB.Close();
    OpenFilledCopy(target_);
    RunBatch(gDB, [] {
        for (const Worksheet& sheet : AllWorksheets()) BuildWorksheet(sheet.Item);
    });
    host.Forget();
}

void ImportCrfTest::InSource(const std::function<void()>& change) {
    gDB.Close();
    gDB = DBEngine::OpenDatabase(source_);
    change();
    gDB.Close();
    gDB = DBEngine::OpenDatabase(target_);
}

void ImportCrfTest::OpenSource() {
    ASSERT_EQ(OpenImportSource(source_), SourceResult::Open)
        << (host.Texts().empty() ? "" : host.Texts()[0]);
}

std::size_t ImportCrfTest::Take(std::initializer_list<std::string_view> items) {
    OpenSource();
    std::vector<ImportEntry> entries;
    for (const std::string_view item : items)
        entries.push_back({std::string(item), fmt::format("X ({})", item)});
    return entries.size() - ImportWorksheets(entries).size();
}

std::string ImportCrfTest::SourceRows(std::string_view item) { return RowsOf(gImportDB, item); }
std::string ImportCrfTest::TargetRows(std::string_view item) { return RowsOf(gDB, item); }

void RunRawSql(const std::string& path, const std::string& sql) {
    sqlite3* handle = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &handle), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(handle, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(handle);
    sqlite3_close(handle);
}

}  // namespace zolmara::test
