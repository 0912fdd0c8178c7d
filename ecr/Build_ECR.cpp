#include "ecr/Build_ECR.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <fstream>
#include <memory>
#include <stdexcept>

#include "core/Clock.h"
#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/Status.h"
#include "core/Windows.h"
#include "ecr/Emitters.h"
#include "ecr/FileNames.h"
#include "ecr/FileTime.h"
#include "ecr/Fingerprint.h"
#include "ecr/Labels.h"
#include "ecr/LocalSeal.h"
#include "ecr/Record.h"
#include "print/PrintDriver.h"
#include "print/Report.h"
#include "print/SendPrtFile.h"
#include "store/AmountSpool.h"
#include "store/Files.h"
#include "store/ReadThrough.h"
#include "store/RunStopped.h"
#include "store/files/NotConfirmed.h"
#include "store/session/Acts.h"
#include "store/session/Session.h"

namespace zolmara {

Variant ECRDate;

namespace {

constexpr int kPiTries = 3;

BuiltFiles lastBuild;

/// A build on its way.
struct Build {
    std::string Ecr;  ///< path of the electronic report
    std::string Pi;   ///< path of the print image
    Sealer Seals = {};
    std::int64_t SecondsBehind = 0;
    bool ClockSetBack = false;
    std::string EcrFingerprint = {};
    std::string PiStamp = {};
    std::string PiFingerprint = {};
    /// All are made aside, the first two sealed.
    std::unique_ptr<OutFile> EcrFile = {};
    std::unique_ptr<OutFile> PiFile = {};
    std::unique_ptr<OutFile> Certification = {};
    std::int16_t CertificationOrient = 0;
    std::unique_ptr<FilesTogether> Files = {};
};

// --- The main window -----------------------------------------------------------------------

void EnableMenus(bool enabled) {
    for (const char* menu : {"mnuEdit", "mnuHelp", "mnuReport", "mnuView"})
        TheWindows().EnableMenu(menu, enabled);
}

void ShowStep(const std::string& text) {
    TheStatus().ShowCalcMsg(text);
    TheStatus().DoEvents();
}

/// The state that a build leaves.
void EndBuild() {
    EnableMenus(true);
    TheStatus().HideCalcMsg();
    ECRStamp.clear();
    TheStatus().SetPointer(Pointer::Normal);
}

std::string CertificationPath() { return PrintFilePath("Spx.prt"); }

// --- The clock -----------------------------------------------------------------------------

DateTime MinuteOf(const DateTime& moment) {
    return DateTime::FromSeconds(moment.Seconds() - moment.Second());
}

std::string StampText() { return FormatDate(ECRDate.AsDate(), "mm/dd/yyyy hh:nn"); }

/// The number of seconds that the message shows.
double SecondsShown(const std::string& message) {
    static constexpr std::size_t kBehindWord = 9;
    return Val(MidText(message, kBehindWord));
}

void WaitForMinute() {
    static constexpr int kSecondsAMinute = 60;
    std::string message;
    while (Now().Second() > 1 && !gDebug) {
        const int left = kSecondsAMinute - Now().Second();
        if (left != SecondsShown(message)) {
            message = fmt::format("Waiting {} seconds for CMS timing requirement", left);
            TheStatus().ShowCalcMsg(message);
        }
        TheStatus().DoEvents();
    }
}

/// The report's stamp is a whole minute, and its file's time must agree with it: so the clock goes
/// back to the start of the minute, or the build waits for the next.
void SetClockToStamp(Build& build) {
    ECRDate = MinuteOf(Now());
    build.SecondsBehind = Now().Seconds() - ECRDate.AsDate().Seconds();
    build.ClockSetBack = SetClock(ECRDate.AsDate());
    if (build.ClockSetBack) return;
    WaitForMinute();
    ECRDate = MinuteOf(Now());
}

void PutClockRight(Build& build) {
    if (!build.ClockSetBack) return;
    const DateTime stamp = ECRDate.AsDate();
    const std::int64_t sinceStamp = Now().Seconds() - stamp.Seconds();
    SetClock(DateTime::FromSeconds(stamp.Seconds() + build.SecondsBehind + sinceStamp));
    build.ClockSetBack = false;
}

// --- The electronic report -----------------------------------------------------------------

void WriteEcr(Build& build) {
    OwnPrintFile file(build.Ecr, IsOwnEcr);
    if (build.Seals.IsLocal()) file.KeepDigest();
    EcrRun run(file.Number());
    ECRStamp = StampText();
    ECR_Type1(run, ECRDate.AsDate());
    TheStatus().ShowCalcMsg("Producing Type 2");
    ECR_Type2(run);
    ECR_Type3(run);
    build.EcrFile = file.Release();
}

void SealEcr(Build& build) {
    ShowStep("Producing Type 4 Record (Finger Print)");
    build.EcrFingerprint = build.Seals.Seal(*build.EcrFile, false);
    SetFileTime(build.EcrFile->AsidePath(), ECRDate.AsDate());
}

// --- The print image -----------------------------------------------------------------------

/// True for the beginning of a print image of this home office.
bool IsOwnPi(std::string_view head) {
    return IsPrintedReport(head) &&
           head.find("Provider CCN: " + gProviderNumber) != std::string_view::npos;
}

void PrintPi(Build& build) {
    OwnPrintFile file(build.Pi, IsOwnPi);
    if (build.Seals.IsLocal()) file.KeepDigest();
    build.PiStamp = StampText();
    Print_All(file.Number());
    PrintLine(file.Number());
    build.PiFile = file.Release();
    TheStatus().DoEvents();
}

/// Looks where the mark stands in nearly every file, at the end; then through all of it, in pieces
/// that overlap, so that it is found across their border.
bool HasFingerprint(const std::string& path) {
    static constexpr std::size_t kPiece = std::size_t{1} << 16;
    static constexpr std::streamoff kTail = 512;
    std::ifstream file(path, std::ios::binary);
    std::string piece(kPiece, ' ');
    const auto hasMark = [&](std::size_t kept) {
        file.read(piece.data() + kept, static_cast<std::streamsize>(kPiece - kept));
        piece.resize(kept + static_cast<std::size_t>(file.gcount()));
        return piece.find(kPiFingerprintMark) != std::string::npos;
    };
    if (file.seekg(-kTail, std::ios::end) && hasMark(0)) return true;
    file.clear();
    file.seekg(0);
    for (std::size_t kept = 0; file;) {
        piece.resize(kPiece);
        if (hasMark(kept)) return true;
        kept = std::min(piece.size(), kPiFingerprintMark.size() - 1);
        std::memmove(piece.data(), piece.data() + piece.size() - kept, kept);
    }
    return false;
}

/// False when the print image came without a fingerprint every time.
bool MakePi(Build& build) {
    ShowStep("Process The PI File");
    for (int failures = 0; failures < kPiTries; ++failures) {
        PrintPi(build);
        build.PiFingerprint = build.Seals.Seal(*build.PiFile, true);
        if (HasFingerprint(build.PiFile->AsidePath())) return true;
    }
    TheDialogs().MsgBox("Government fingerprint program failed. Please call Velquist", kCritical,
                        "Critical Error");
    return false;
}

// --- The build -----------------------------------------------------------------------------

void PrintCertificationPage(Build& build) {
    ShowStep("Print The Sp1 Worksheet");
    OwnPrintFile file(CertificationPath());
    PrintRun run(file.Number());
    Print_Sp1(run, true, build.EcrFingerprint, build.PiStamp, build.PiFingerprint);
    build.CertificationOrient = run.gPageOrient;
    build.Certification = file.Release();
}

/// False when the print image could not be sealed. The files wait for their names. The amounts of
/// the CRF are read once, for the report; the print image takes them from where they were put
/// meanwhile.
bool Produce(Build& build) {
    const ReadThrough reading(gDB);
    const AmountSpool amounts(gDB);
    SetClockToStamp(build);
    WriteEcr(build);
    SealEcr(build);
    if (!MakePi(build)) return false;
    SetFileTime(build.PiFile->AsidePath(), ECRDate.AsDate());
    PrintCertificationPage(build);
    build.Files = std::make_unique<FilesTogether>(
        std::vector<OutFile*>{build.EcrFile.get(), build.PiFile.get(), build.Certification.get()});
    return true;
}

/// Behind the statement's own saving nothing takes it back.
void PutInPlace(Build& build) {
    const auto told = [&] { lastBuild = {build.Ecr, build.Pi, build.Seals.Notice()}; };
    try {
        build.Files->Put();
    } catch (const NotConfirmed&) {
        told();
        throw;
    } catch (const StoreError& error) {
        throw StoreError(error.kind(),
                         fmt::format("{}; none of the files was put in place, while the statement "
                                     "that they were made from is saved",
                                     error.what()));
    }
    told();
}

void PrintPage(const Build& build) {
    PrintRun run;
    SendPrtFile(CertificationPath(), build.CertificationOrient, run);
    ShowStep("Print The Sp2 Worksheet");
}

/// Puts clock and menus right whatever happens.
void Finish(Build& build, const std::function<void()>& work) {
    try {
        work();
    } catch (...) {
        PutClockRight(build);
        EndBuild();
        throw;
    }
}

/// The files get their names when what they were made from is saved: a file that looks finished
/// must not tell of figures and of a signature that the statement lost.
void EndWithFiles(Build& build) {
    Finish(build, [&] {
        RunStep("ECR", [&] {
            PutInPlace(build);
            PrintPage(build);
        });
    });
    PutClockRight(build);
    EndBuild();
    TheWindows().ShowCopy2Floppy(build.Ecr);
    TheStatus().SetPointer(Pointer::Normal);
}

/// A build whose files wait for the saving of the statement. Where that does not come about, clock
/// and menus are put right all the same.
class Waiting {
public:
    explicit Waiting(std::shared_ptr<Build> build) : build_(std::move(build)) {}
    ~Waiting() {
        if (saved_) return;
        PutClockRight(*build_);
        EndBuild();
    }
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;

    void Saved() {
        saved_ = true;
        EndWithFiles(*build_);
    }

private:
    std::shared_ptr<Build> build_;
    bool saved_ = false;
};

}  // namespace

void NeedMayBuild(const std::string& ecrPath) {
    const std::string pi = PiPath(ecrPath);
    NeedMayWrite(ecrPath, IsOwnEcr);
    NeedMayWrite(pi, IsOwnPi);
    NeedMayWrite(CertificationPath(), IsPrintedReport);
    if (IsSameFile(ecrPath, pi))
        throw std::runtime_error(
            fmt::format("{}: The ECR file needs another name than the PI file", ecrPath));
}

const BuiltFiles& LastBuild() { return lastBuild; }

std::string BuiltNotice() {
    if (lastBuild.Ecr.empty()) return {};
    return fmt::format("Electronic cost report: {}\rPrint image: {}\r{}", lastBuild.Ecr,
                       lastBuild.Pi, lastBuild.Seal);
}

void Build_ECR() {
    const std::optional<std::string> path = AskEcrPath();
    if (!path) {
        TheStatus().SetPointer(Pointer::Normal);
        return;
    }
    const auto build = std::make_shared<Build>(Build{*path, PiPath(*path)});
    NeedMayBuild(build->Ecr);
    ClearScratch(FolderOf(build->Ecr));
    const ReplaceAsTold asked(true, "");
    TheStatus().SetPointer(Pointer::Hourglass);
    EnableMenus(false);
    Finish(*build, [&] {
        RunUnnamedAct([&] {
            RunStep("ECR", [&] {
                if (!Produce(*build)) return;
                const auto waiting = std::make_shared<Waiting>(build);
                TheActs().OnceSaved([waiting] { waiting->Saved(); });
            });
        });
    });
}

}  // namespace zolmara
