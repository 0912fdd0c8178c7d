#include "store/FilledCrf.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <tuple>
#include <vector>

#include "calc/Calc_All.h"
#include "import/Staging.h"
#include "structure/AddDeleteCC.h"
#include "structure/modAddS2.h"
#include "support/TestCrf.h"

namespace zolmara::test {
namespace {

struct KeyedCell {
    std::string_view Table;
    double Line;
    std::string_view Field;
    Variant Value;
};

void Fill(const std::vector<KeyedCell>& cells) {
    for (const auto& cell : cells) SetCell(cell.Table, cell.Line, cell.Field, cell.Value);
}

void AddStructure() {
    AddCostCenter(Currency(4.01));
    SetCell("CostCenters", 4.01, "CCName", "Split Insurance");
    RenameCostCenter(Currency(4.01), "Split Insurance");
    const auto component = [](int part, double line, const char* name, const char* ccn) {
        AddS2Line(Currency(line), part);
        RenameS2Line(Currency(line), part, name, ccn);
    };
    component(1, 1, "General Hospital", "14-0001");
    component(1, 2, "Clinic", "14-0002");
    component(2, 1, "Parking", "");
    component(3, 1, "Region One", "HO-0001");
}

void AddEntries() {
    gDB.Execute(
        "INSERT INTO A6 (LineNum,Col_1,Col_2,Col_4,Col_5,Col_7,Col_8) VALUES "
        "(1,'Officers','A',8,100,9,100);");
    gDB.Execute(
        "INSERT INTO A6 (LineNum,Col_1,Col_2,Col_4,Col_5,Col_7,Col_8) VALUES "
        "(2,'Insurance','B',4.01,25,4,25);");
    gDB.Execute(
        "INSERT INTO A81p1 (SeqNum,Col_1,Col_3,Col_4,Col_5,Col_6) VALUES "
        "(1,8,'Rent',1,60,45);");
    gDB.Execute("INSERT INTO A81p2 (SeqNum,Col_1,Col_2) VALUES (1,'G','Owner');");
    Fill({{"A", 1, "Col_1", 1000},     {"A", 2, "Col_1", 2000},
          {"A", 4, "Col_1", 300},      {"A", 4.01, "Col_1", 30},
          {"A", 8, "Col_1", 5000},     {"A", 9, "Col_1", 7000},
          {"A", 10, "Col_1", 100},     {"A8", 1, "Col_2", "A"},
          {"A8", 1, "Col_3", -40},     {"A8", 1, "Col_5", 10},
          {"A7p1", 1, "Col_1", 1000},  {"A7p1", 1, "Col_2", 100},
          {"A7p1", 1, "Col_3", 50},    {"A7p1", 1, "Col_5", 10},
          {"A7p2", 1, "Col_1", 300},   {"A7p2", 2, "Col_1", 100},
          {"G", 1, "Col_1", 100},      {"G", 6, "Col_1", 10},
          {"G", 11, "Col_1", 500},     {"G", 13, "Col_1", 50},
          {"G", 33, "Col_1", 400},     {"G", 41, "Col_1", 40},
          {"G", 47, "Col_1", 100},     {"G1", 1, "Col_2", 20000},
          {"G1", 4, "Col_2", 100},     {"Bp1", 1, "CC_100", 200},
          {"B1p1", 1, "CC_800", 500},  {"C1p1", 1, "CC_100", 10},
          {"C1p1", 2, "CC_100", 20},   {"C1p3", 53, "CC_100", 300},
          {"D1p1", 1, "CC_900", 1},    {"D1p3", 1, "CC_900", 1},
          {"D1p3", 53, "CC_900", 700}, {"E1p1", 1, "Col_1", 60},
          {"E1p1", 2, "Col_1", 20},    {"E1p2", 1, "Col_1", 20},
          {"S1p1", 4, "Col_3", "Yes"}, {"S1p1", 4, "Col_4", "12/31/2023"}});
}

void AddWorkTables() {
    Build_Error();
    AddErrorRow("Potential Error", "2000", "A-6");
    AddErrorRow("Potential Error", "2001", "B");
    ASSERT_TRUE(PrepareStaging());
    for (const auto& [sheet, row, col, contents] : {std::tuple{"A6", 2.0, 1.0, "100"},
                                                    {"a6", 1.0, 5.0, "500"},
                                                    {"A81P2", 1.0, 1.0, "G"},
                                                    {"CostCenter", 4.01, 0.0, "Split"},
                                                    {"S2p1", 1.0, 1.0, "Hospital"}})
        gDB.Execute("INSERT INTO ImportASCII ([WorkSheet],Row,Col,Contents) VALUES (?,?,?,?);",
                    {sheet, Currency(row), Currency(col), contents});
}

std::string FillFile(const TempFolder& folder) {
    auto path = folder.File("Filled.CRF");
    CreateCrf(path, SampleFields());
    AddStructure();
    AddEntries();
    Calc_All();
    AddWorkTables();
    DropCrf();
    return path;
}

void ListRows(std::string& text, const std::string& table) {
    auto rows = gDB.OpenRecordset(table);
    for (int field = 0; field < rows.FieldCount(); ++field) text += rows.FieldName(field) + "|";
    for (; !rows.Eof(); rows.MoveNext()) {
        text += "\n";
        for (int field = 0; field < rows.FieldCount(); ++field)
            text += StrOr(rows[field], "<Null>") + "|";
    }
}

void Say(int pipe, std::string_view text) {
    if (write(pipe, text.data(), text.size()) < 0) _exit(6);
}

[[noreturn]] void BeChild(int pipe, const std::function<void()>& prepare,
                          const std::function<void()>& work) {
    try {
        prepare();
        Say(pipe, "+");
        work();
        _exit(0);
    } catch (const StoreError& error) {
        Say(pipe, error.what());
        _exit(error.kind() == StoreError::Kind::DiskFull ? 3 : 4);
    } catch (const std::exception& error) {
        Say(pipe, error.what());
    } catch (...) {
    }
    _exit(5);
}

std::string ReadToEnd(int pipe) {
    std::string text;
    char buffer[4096];
    for (ssize_t count; (count = read(pipe, buffer, sizeof buffer)) > 0;)
        text.append(buffer, static_cast<std::size_t>(count));
    return text;
}

}  // namespace

const std::string& FilledFile() {
    static const TempFolder folder;
    static const std::string path = FillFile(folder);
    return path;
}

void OpenFilledCopy(const std::string& path) {
    gDB.Close();
    std::filesystem::copy_file(FilledFile(), path,
                               std::filesystem::copy_options::overwrite_existing);
    SetCrfPath(path);
    gDB = DBEngine::OpenDatabase(path);
}

std::string BytesOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string ContentOfCrf() {
    std::string text;
    for (const auto& table : gDB.TableNames()) {
        text += "\n== " + table + "\n";
        ListRows(text, table);
    }
    return text;
}

ChildEnd RunInChild(const std::function<void()>& prepare, const std::function<void()>& work) {
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("No pipe");
    const pid_t child = fork();
    if (child == 0) BeChild(ends[1], prepare, work);
    close(ends[1]);
    ChildEnd end;
    char ready = 0;
    if (read(ends[0], &ready, 1) == 1) end.Message = ReadToEnd(ends[0]);
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    end.Killed = WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    if (WIFEXITED(status)) end.Status = WEXITSTATUS(status);
    return end;
}

}  // namespace zolmara::test
