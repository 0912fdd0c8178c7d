#include "ui/overview/StatementNotes.h"

#include <fmt/format.h>

#include <QCryptographicHash>
#include <filesystem>

#include "core/Globals.h"
#include "core/Machine.h"
#include "store/files/UserFolders.h"
#include "store/session/Session.h"
#include "store/session/Settings.h"
#include "store/session/Signature.h"
#include "ui/main/QtHost.h"
#include "ui/main/QtText.h"
#include "ui/main/StatementWatch.h"
#include "ui/main/frmMain.h"

namespace zolmara::ui {
namespace {

namespace fs = std::filesystem;

StatementNotes notes;
std::string path;  ///< of the CRF that they are of; empty without one
bool toldOfSignature = false;
std::int64_t calculatedAt;  ///< the commits of this session when it was calculated

Settings File() {
    const fs::path folder = fs::path(UserDataFolder()) / "zolmara";
    std::error_code ignored;
    fs::create_directories(folder, ignored);
    return Settings((folder / "statements.ini").string());
}

/// A path as a key of a settings file, whatever letters it has.
std::string KeyOf(const std::string& file) {
    const QByteArray hash =
        QCryptographicHash::hash(QByteArray::fromStdString(file), QCryptographicHash::Sha1);
    return hash.toHex().toStdString();
}

/// Another program's change shows in it.
std::string MarkOf(const std::string& file) {
    std::error_code error;
    const auto size = fs::file_size(file, error);
    const auto time = fs::last_write_time(file, error);
    return error ? "" : fmt::format("{} {}", size, time.time_since_epoch().count());
}

constexpr const char* kApplication = "Statements";

void Read() {
    notes = {};
    const Settings file = File();
    const auto get = [&](const char* key) { return file.Get(kApplication, KeyOf(path), key, ""); };
    if (get("Mark").empty() || get("Mark") != MarkOf(path)) return;
    notes = {.Calculated = get("Calculated"),
             .Checked = get("Checked"),
             .Keyed = static_cast<int>(Val(get("Keyed"))),
             .Changed = get("Changed") == "True"};
}

void Write() {
    const Settings file = File();
    const auto put = [&](const char* key, const std::string& value) {
        file.Save(kApplication, KeyOf(path), key, value);
    };
    if (notes.Calculated.empty() && file.Get(kApplication, KeyOf(path), "Mark", "").empty()) return;
    put("Calculated", notes.Calculated);
    put("Checked", notes.Checked);
    put("Keyed", std::to_string(notes.Keyed));
    put("Changed", notes.Changed ? "True" : "False");
    put("Mark", MarkOf(path));
}

std::string NowText() { return Text(Variant(TheMachine().Now())); }

void LookForChange() {
    if (CrfIsOpen() && gDB.CommitCount() != calculatedAt) notes.Changed = true;
}

}  // namespace

StatementNotes TheNotes() {
    FollowNotes();
    return notes;
}

void NoteCalculation(bool checked) {
    FollowNotes();
    const std::string now = NowText();
    notes = {.Calculated = now, .Checked = checked ? now : notes.Checked};
    calculatedAt = gDB.CommitCount();
    TellOfStatement();
}

FiguresStay::FiguresStay() : path_(gCRFPath), changed_(TheNotes().Changed) {}

FiguresStay::~FiguresStay() {
    if (!CrfIsOpen() || gCRFPath != path_ || path != path_) return;
    notes.Changed = changed_;
    calculatedAt = gDB.CommitCount();
    TellOfStatement();
}

namespace {

/// What was signed are the files that were built, and they stay as they are.
void TellOfSignature() {
    frmMain* const main = TheQtHost().Main();
    if (toldOfSignature || !main || SignatureText().empty()) return;
    toldOfSignature = true;
    main->ShowDone(
        "This statement is signed.  What is keyed now is not in the files that were signed: "
        "calculate, and build them again.");
}

}  // namespace

void NoteEntry() {
    FollowNotes();
    ++notes.Keyed;
    TellOfStatement();
    TellOfSignature();
}

void FollowNotes() {
    // While a close compacts the file, its path is there and its handle is not.
    const std::string now = CrfIsOpen() || gCRFPath == path ? gCRFPath : std::string();
    if (now == path) return LookForChange();
    if (!path.empty()) Write();
    path = now;
    notes = {};
    toldOfSignature = false;
    if (path.empty()) return;
    Read();
    calculatedAt = gDB.CommitCount();
}

}  // namespace zolmara::ui
