#include <fmt/format.h>

#include <array>
#include <filesystem>
#include <stdexcept>

#include "cli/Commands.h"
#include "cli/CrfFile.h"
#include "cli/ImportLog.h"
#include "import/ImportSource.h"
#include "import/LastYear.h"
#include "store/Dao.h"
#include "store/WholeCrf.h"
#include "worksheets/NewCrf.h"

namespace fs = std::filesystem;

namespace zolmara::cli {

namespace {

constexpr std::array kArguments{
    kFileArgument,
    kNumberArgument,
    kStartArgument,
    Argument{"--end", ArgumentKind::Option,
             "Last day of the fiscal year; one year from the start when left out"},
    kNameArgument,
    Argument{"--from", ArgumentKind::Option, "Last year's file, to start from its structure"},
    Argument{"--with", ArgumentKind::Several,
             "With --from: worksheets of which the keyed cells come over, too"},
    Argument{"--force", ArgumentKind::Flag, "Replace a file that is there"},
};

void NeedRoom(const fs::path& path, const Inputs& inputs) {
    std::error_code error;
    if (fs::is_directory(path, error))
        throw StoreError(StoreError::Kind::CannotOpen,
                         fmt::format("{} is a folder", path.string()));
    if (fs::exists(path, error) && !inputs.Has("--force"))
        throw std::runtime_error(
            fmt::format("{} is there already; --force replaces it", path.string()));
    NeedReplaceable(path);
}

ExitStatus NewFromNothing(const fs::path& path, const Inputs& inputs) {
    for (const char* name : {"--number", "--start", "--name"})
        if (!inputs.Has(name)) throw CommandLineError{fmt::format("{} is required", name)};
    if (!inputs.Texts("--with").empty()) throw CommandLineError{"--with needs --from"};
    NewCrfFields fields;
    fields.ProviderNum = inputs.Text("--number");
    fields.FYStart = inputs.Text("--start");
    fields.FYEnd = inputs.Text("--end");
    fields.FacilityName = inputs.Text("--name");
    if (CheckNewCrfFields(fields) != NewCrfField::None) return kRefusedOrMessages;
    NeedRoom(path, inputs);
    return CreateCrf(path, fields) ? kDone : kRefusedOrMessages;
}

/// What could not be carried over is printed; the file is there all the same.
ExitStatus FromLastYear(const fs::path& path, const Inputs& inputs) {
    for (const char* name : {"--number", "--name"})
        if (inputs.Has(name))
            throw CommandLineError{fmt::format("{} comes from last year's file", name)};
    const ImportSource source(FullPath(inputs.Text("--from")));
    if (source.Result() == SourceResult::Unreadable) return kFileTrouble;
    if (source.Result() != SourceResult::Open) return kRefusedOrMessages;
    NewCrfFields fields = FieldsAfterLastYear(inputs.Text("--start"), inputs.Text("--end"));
    if (CheckNewCrfFields(fields) != NewCrfField::None) return kRefusedOrMessages;
    if (IsImportSource(path.string()))
        throw std::runtime_error(fmt::format("{} is last year's file", path.string()));
    NeedRoom(path, inputs);
    if (!CreateFromLastYear(path, fields, inputs.Texts("--with"))) return kRefusedOrMessages;
    return PrintImportMessages(ImportMessages());
}

ExitStatus New(const Inputs& inputs) {
    const fs::path path = FullPath(inputs.Text("FILE"));
    return inputs.Has("--from") ? FromLastYear(path, inputs) : NewFromNothing(path, inputs);
}

}  // namespace

const Command kNew{
    "new", "Make a new Cost Report File",
    "Without --from, --number, --start and --name must be given. With it number and\n"
    "name come from last year's file, and the fiscal year is the one behind last\n"
    "year's unless --start and --end say otherwise: cost centers, components, bases,\n"
    "header lines, S-1 and officers come over, amounts and statistics do not. What\n"
    "could not come over is printed, one line a message.\n\n"
    "The fiscal year must begin on or after 10/1/2022 and have 30 to 457 days. The\n"
    "question about a year of more than 365 days is answered with Yes.",
    kArguments, New};

}  // namespace zolmara::cli
