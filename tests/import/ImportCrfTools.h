#pragma once

// Two files of one structure: last year's, filled and calculated, and the open CRF, empty.

#include <string>
#include <string_view>
#include <vector>

#include "import/ImportSource.h"
#include "import/ImportWorksheets.h"
#include "store/FilledCrf.h"
#include "support/TestCrf.h"

namespace zolmara::test {

class ImportCrfTest : public SessionTest {
protected:
    ImportCrfTest();

    /// Changes the source: it is open as the session's CRF while `change` runs.
    void InSource(const std::function<void()>& change);
    /// Opens the source; the test fails when it is refused.
    void OpenSource();
    /// Takes over worksheets by Item, from the source that is opened for it.
    std::size_t Take(std::initializer_list<std::string_view> items);
    /// All that the source holds of a worksheet, as text; and the open CRF.
    std::string SourceRows(std::string_view item);
    static std::string TargetRows(std::string_view item);

    std::string folderOfSource_ = folder.File("last");
    std::string source_ = folderOfSource_ + "/LastYear.CRF";
    std::string target_ = folder.File("ThisYear.CRF");
};

/// Fills a file by SQL of the library's own, past the checks of the store.
void RunRawSql(const std::string& path, const std::string& sql);

}  // namespace zolmara::test
