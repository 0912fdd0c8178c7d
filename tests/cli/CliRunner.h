#pragma once

// Runs the command line program end to end, as a shell would.

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "store/harness/Faults.h"
#include "support/TestCrf.h"

namespace zolmara::test {

struct CliResult {
    int Status = -1;  ///< 1000 and the signal when it was killed
    std::string Out;
    std::string Err;

    nlohmann::ordered_json Json() const { return nlohmann::ordered_json::parse(Out); }
};

/// What the program has to live with.
struct CliSetting {
    long FileLimit = -1;              ///< bytes that a file may grow to; none below 0
    std::optional<FaultPlan> Faults;  ///< calls that fail, or kill it
    std::string OutputFile;           ///< standard output goes there
    std::string ErrorFile;            ///< and standard error there
    bool NoStandardFiles = false;     ///< neither input nor output nor error is open
    std::string Program;              ///< a copy of the program, with what lies beside it
};

/// A temporary folder of CRFs and settings, and the program.
class CliTest : public ::testing::Test {
protected:
    CliResult Run(std::vector<std::string> words, const CliSetting& setting = {});
    /// Runs a command that must end with status 0, and gives its output.
    std::string Do(const std::vector<std::string>& words);

    std::string File(std::string_view name) const { return folder.File(name); }
    /// A new CRF of "Sample Home Office", 12-3456, 10/1/2022 to 9/30/2023.
    std::string NewCrf(std::string_view name = "Sample.CRF");
    /// The calculated sample home office.
    std::string SampleCrf();
    /// A text file in the folder.
    std::string TextFile(std::string_view name, std::string_view content);

    TempFolder folder;
};

std::string ContentOf(const std::string& path);

}  // namespace zolmara::test
