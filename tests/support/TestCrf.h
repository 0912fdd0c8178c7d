#pragma once

// Cost Report Files for tests: each in a temporary folder of its own, open as the session's CRF.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>

#include "core/Globals.h"
#include "store/session/CoreTables.h"
#include "store/session/Session.h"
#include "support/ScriptedHost.h"
#include "worksheets/NewCrf.h"

namespace zolmara::test {

/// A folder that goes with everything in it.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    std::string File(std::string_view name) const { return (path_ / name).string(); }

private:
    std::filesystem::path path_;
};

/// "Sample Home Office", 12-3456, 10/1/2022 to 9/30/2023.
NewCrfFields SampleFields();

/// A scripted host and a temporary folder; no CRF is open, before and after.
class SessionTest : public ::testing::Test {
protected:
    SessionTest();
    ~SessionTest() override;

    ScriptedHost host;
    TempFolder folder;
};

/// An open CRF with the core tables alone: Worksheets, Log, Master, HeaderLines, CostCenters, ES.
class CoreCrf : public SessionTest {
protected:
    CoreCrf();
};

/// An open, new CRF with all worksheets, as New_CRF makes it. What was recorded of making it
/// is forgotten.
class TestCrf : public SessionTest {
protected:
    TestCrf() {
        CreateCrf(folder.File("Sample.CRF"), SampleFields());
        host.Forget();
    }
};

/// Makes a CRF with the core tables alone and leaves it open.
void MakeCoreCrf(const std::string& path);

/// A cell of the row with this key (LineNum, or SeqNum where the table has that). Fails the test
/// and gives Null when there is no such row.
Variant Cell(std::string_view table, double line, std::string_view field);
/// Stores a value into a cell; fails the test when there is no such row.
void SetCell(std::string_view table, double line, std::string_view field, const Variant& value);
/// The number of rows of a table.
int Rows(std::string_view table);

}  // namespace zolmara::test
