#include <fmt/format.h>

#include <array>
#include <stdexcept>

#include "cli/Commands.h"
#include "cli/CrfFile.h"
#include "cli/Output.h"
#include "core/Globals.h"
#include "forms/EditInfo.h"
#include "store/Files.h"
#include "store/WholeCrf.h"
#include "store/base/FileBasics.h"
#include "store/session/Session.h"

namespace zolmara::cli {

namespace {

constexpr std::array kArguments{
    kFileArgument,
    kNumberArgument,
    kStartArgument,
    Argument{"--end", ArgumentKind::Option,
             "Last day of the fiscal year; an empty text is one year from the start"},
    kNameArgument,
    Argument{"--save-as", ArgumentKind::Option, "Write the change into a copy of this name"},
};

constexpr std::array<std::string_view, 5> kChanges{"--number", "--start", "--end", "--name",
                                                   "--save-as"};

bool AsksForChange(const Inputs& inputs) {
    for (const std::string_view option : kChanges)
        if (inputs.Has(option)) return true;
    return false;
}

void Take(const Inputs& inputs, std::string_view option, std::string& field) {
    if (inputs.Has(option)) field = inputs.Text(option);
}

IdentityFields Changed(const Inputs& inputs) {
    IdentityFields fields = PresentIdentity();
    Take(inputs, "--number", fields.ProviderNum);
    Take(inputs, "--start", fields.FYStart);
    Take(inputs, "--end", fields.FYEnd);
    Take(inputs, "--name", fields.FacilityName);
    return fields;
}

void Show() {
    Listing identity;
    identity.Columns = {"Number", "FYStart", "FYEnd", "Name"};
    identity.Rows.push_back({gProviderNumber, gFYStart, gFYEnd, gProviderName});
    PrintRecord(identity);
}

/// A copy takes no file's place.
std::string NewFile(const Inputs& inputs) {
    std::string path = FullPath(inputs.Text("--save-as"));
    if (FileExists(path) && !IsSameFile(path, gCRFPath))
        throw std::runtime_error(fmt::format("{} is there already", path));
    // A place that takes no file is told as that, and not as a copy that failed.
    if (!FileExists(path)) NeedReplaceable(path);
    return path;
}

/// A copy that could not be changed is still the former statement under another's name. What is
/// open is the copy only from when its name has taken the place of `source`.
void DropCopy(const std::string& source, const std::string& path) {
    if (gCRFPath != path || path == source) return;
    DropCrf();
    DeleteFile(path);
    DeleteFile(path + "-journal");
}

IdentityResult SaveIntoCopy(IdentityFields& fields, const std::string& path) {
    const std::string source = gCRFPath;
    try {
        return SaveIdentityAs(fields, path);
    } catch (...) {
        DropCopy(source, path);
        throw;
    }
}

ExitStatus Identity(const Inputs& inputs) {
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    if (!AsksForChange(inputs)) {
        Show();
        return kDone;
    }
    IdentityFields fields = Changed(inputs);
    const IdentityResult result =
        inputs.Has("--save-as") ? SaveIntoCopy(fields, NewFile(inputs)) : SaveIdentity(fields);
    return result.End == IdentitySave::Saved ? kDone : kRefusedOrMessages;
}

}  // namespace

const Command kIdentity{
    "identity", "Show or change whose statement it is",
    "What is left out stays. The fiscal year must begin on or after 10/1/2022 and have 28 to 457\n"
    "days. A change voids the electronic signature. With --save-as FILE stays as it is and the\n"
    "change goes into the copy.",
    kArguments, Identity};

}  // namespace zolmara::cli
