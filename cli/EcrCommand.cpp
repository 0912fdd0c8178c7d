#include <array>
#include <filesystem>
#include <optional>

#include "calc/Calc_All.h"
#include "cli/CliHost.h"
#include "cli/Commands.h"
#include "cli/CrfFile.h"
#include "cli/Findings.h"
#include "cli/Output.h"
#include "core/Globals.h"
#include "ecr/Build_ECR.h"
#include "ecr/Certification.h"
#include "ecr/FileNames.h"
#include "editchecks/modEditChecks.h"
#include "print/Report.h"
#include "store/session/Acts.h"
#include "store/session/Session.h"

namespace zolmara::cli {

namespace {

constexpr std::array kArguments{
    kFileArgument,
    Argument{"--out", ArgumentKind::Option, "Folder of the two files; the CRF's without it"},
    Argument{"--force", ArgumentKind::Flag, kForceHelp},
    Argument{"--manual", ArgumentKind::Flag, "The statement is to be signed by hand"},
    Argument{"--first", ArgumentKind::Option, "First name of the signer"},
    Argument{"--last", ArgumentKind::Option, "Last name of the signer"},
    Argument{"--title", ArgumentKind::Option, "Title of the signer"},
};

struct Signer {
    std::string First;
    std::string Last;
    std::string Title;
};

/// Who signs electronically; nobody where it is to be done by hand.
std::optional<Signer> SignerOf(const Inputs& inputs) {
    const bool named = inputs.Has("--first") || inputs.Has("--last") || inputs.Has("--title");
    if (inputs.Has("--manual")) {
        if (named) throw CommandLineError{"--manual takes no name and no title"};
        return std::nullopt;
    }
    const Signer signer{inputs.Text("--first"), inputs.Text("--last"), inputs.Text("--title")};
    if (!CanAccept(signer.First, signer.Last, signer.Title))
        throw CommandLineError{"give --manual, or --first, --last and --title of the signer"};
    return signer;
}

std::string FolderOfFiles(const Inputs& inputs) {
    if (!inputs.Has("--out")) return gCRFDir;
    return FullPath(inputs.Text("--out"));
}

std::string EcrPathOf(const Inputs& inputs) {
    return (std::filesystem::path(FolderOfFiles(inputs)) / EcrFileName()).string();
}

void SignAndBuild(const std::optional<Signer>& signer) {
    if (signer)
        AcceptCertification(signer->First, signer->Last, signer->Title);
    else
        SignManually();
}

void PrintFiles(const std::string& ecrPath) {
    PrintRecord({{"ECR", "PI", "Certification", "Seal"},
                 {{ecrPath, PiPath(ecrPath), PrintFilePath("Spx.prt"), LastBuild().Seal}}});
}

/// False when findings block it. The files come when the statement is saved.
bool CalculateAndBuild(const Inputs& inputs, const std::optional<Signer>& signer,
                       int& messagesAhead) {
    if (mnuReportCalculate(Calc_All) == kNonFatalLevel) return false;
    messagesAhead = TheCliHost().MessageCount();
    TheCliHost().AnswerFile(EcrPathOf(inputs));
    SignAndBuild(signer);
    return true;
}

/// Figures, findings and signature belong to the files that are built: they are one act.
ExitStatus Ecr(const Inputs& inputs) {
    const std::optional<Signer> signer = SignerOf(inputs);
    if (!OpenFile(inputs)) return kRefusedOrMessages;
    const ReplaceAsTold told(inputs.Has("--force"), std::string(kForceHint));
    NeedMayBuild(EcrPathOf(inputs));
    bool mayBuild = false;
    int messages = 0;
    RunAct("Build the ECR", [&] { mayBuild = CalculateAndBuild(inputs, signer, messages); });
    if (!mayBuild) {
        PrintFindings();
        return kBlocked;
    }
    const std::optional<std::string> built = TheCliHost().BuiltEcr();
    if (built) PrintFiles(*built);
    return built && TheCliHost().MessageCount() == messages ? kDone : kRefusedOrMessages;
}

}  // namespace

const Command kEcr{
    "ecr", "Sign, and build the two files that are submitted: ECR and PI",
    "Calculates and checks first; with a non-fatal error nothing is signed or built, the\n"
    "findings are printed, and the status is 3. The certification page, Worksheet S with\n"
    "the signature and both seals, becomes Spx.prt in the folder of the CRF.\n\n"
    "The files are sealed by the government's fingerprint library libhcfafp.so where it\n"
    "lies in the folder of this program. Otherwise they get a local seal, \"LOCALSEAL-1:\"\n"
    "and the SHA-256 of the file: it shows whether a file has been changed, but a file with\n"
    "it cannot be submitted. The output says which seal was used.",
    kArguments, Ecr};

}  // namespace zolmara::cli
