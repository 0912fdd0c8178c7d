#include <fmt/format.h>

#include <array>
#include <filesystem>
#include <stdexcept>

#include "cli/Commands.h"
#include "cli/CrfFile.h"
#include "store/session/Session.h"
#include "worksheets/NewCrf.h"

namespace fs = std::filesystem;

namespace zolmara::cli {

namespace {

constexpr std::array kArguments{
    kFileArgument,
    Argument{"--number", ArgumentKind::Needed, "The home office number, NN-NNNN"},
    Argument{"--start", ArgumentKind::Needed, "First day of the fiscal year, M/D/YYYY"},
    Argument{"--end", ArgumentKind::Option,
             "Last day of the fiscal year; one year from the start when left out"},
    Argument{"--name", ArgumentKind::Needed, "Name of the home office"},
    Argument{"--force", ArgumentKind::Flag, "Replace a file that is there"},
};

/// The file takes its place when it is whole; one that is there stays until then.
void CreateWhole(const fs::path& path, const NewCrfFields& fields) {
    const std::string unfinished = path.string() + ".new";
    try {
        CreateCrf(unfinished, fields);
        DropCrf();
        // A journal that a crash left behind belongs to the former file.
        fs::remove(path.string() + "-journal");
        fs::rename(unfinished, path);
    } catch (const fs::filesystem_error& error) {
        std::error_code ignored;
        fs::remove(unfinished, ignored);
        throw StoreError(StoreError::Kind::CannotOpen,
                         fmt::format("{}: {}", path.string(), error.code().message()));
    }
}

ExitStatus New(const Inputs& inputs) {
    if (inputs.Text("FILE").empty()) throw CommandLineError{"FILE must not be empty"};
    const fs::path path = FullPath(inputs.Text("FILE"));
    NewCrfFields fields;
    fields.ProviderNum = inputs.Text("--number");
    fields.FYStart = inputs.Text("--start");
    fields.FYEnd = inputs.Text("--end");
    fields.FacilityName = inputs.Text("--name");
    if (CheckNewCrfFields(fields) != NewCrfField::None) return kRefusedOrMessages;
    std::error_code error;
    if (fs::is_directory(path, error))
        throw StoreError(StoreError::Kind::CannotOpen,
                         fmt::format("{} is a folder", path.string()));
    if (fs::exists(path, error) && !inputs.Has("--force"))
        throw std::runtime_error(
            fmt::format("{} is there already; --force replaces it", path.string()));
    CreateWhole(path, fields);
    return kDone;
}

}  // namespace

const Command kNew{"new", "Make a new Cost Report File",
                   "The fiscal year must begin on or after 10/1/2022 and have 30 to 457 days. The\n"
                   "question about a year of more than 365 days is answered with Yes.",
                   kArguments, New};

}  // namespace zolmara::cli
