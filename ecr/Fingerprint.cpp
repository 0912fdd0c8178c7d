#include "ecr/Fingerprint.h"

#include <dlfcn.h>
#include <fmt/format.h>

#include <array>
#include <cstring>
#include <filesystem>
#include <stdexcept>

#include "core/Dialogs.h"
#include "core/Globals.h"
#include "core/Machine.h"
#include "ecr/LocalSeal.h"
#include "store/Files.h"
#include "store/files/FileDoor.h"

namespace fs = std::filesystem;

namespace zolmara {
namespace {

constexpr std::size_t kPathBuffer = 250;
constexpr std::size_t kTextBuffer = 100;

[[noreturn]] void CannotUse(const std::string& library, const char* reason) {
    throw std::runtime_error(fmt::format("The fingerprint library {} cannot be used: {}", library,
                                         reason ? reason : "no reason given"));
}

/// The library logs what it does where the CRF's folder holds its log file.
bool IsLogWanted() { return FileExists((fs::path(gCRFDir) / "hcfafp.log").string()); }

/// What the library has put into its buffer, up to the end that it may have set.
std::string TextIn(const std::array<char, kTextBuffer>& buffer) {
    return FromCodePage1252(std::string_view(buffer.data(), strnlen(buffer.data(), buffer.size()))
                                .substr(0, kFingerprintLength));
}

}  // namespace

std::optional<std::string> FingerprintLibrary() {
    std::string path = (fs::path(TheMachine().ProgramFolder()) / "libhcfafp.so").string();
    // A link to nowhere is a library that was meant and cannot be used.
    std::error_code error;
    if (!fs::exists(fs::symlink_status(path, error))) return std::nullopt;
    return path;
}

std::string SealNotice() {
    if (const auto library = FingerprintLibrary())
        return fmt::format("Sealed by the government's fingerprint library {}.", *library);
    return "Sealed by the local seal, since the government's fingerprint library is not in the "
           "program's folder. Files with the local seal cannot be submitted.";
}

Sealer::Sealer() {
    const auto library = FingerprintLibrary();
    if (!library) return;
    name_ = *library;
    // A path with a separator, so that no other library of the name is found.
    void* const handle = ::dlopen(fs::absolute(*library).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) CannotUse(*library, ::dlerror());
    library_ = std::shared_ptr<void>(handle, [](void* open) { ::dlclose(open); });
    function_ = reinterpret_cast<HcfaFpFunction>(::dlsym(handle, "HcfaFp"));
    if (!function_) CannotUse(*library, ::dlerror());
}

std::string Sealer::SealByLibrary(const std::string& path, bool printImage) {
    if (path.size() >= kPathBuffer)
        throw std::runtime_error(
            fmt::format("{}: The path is too long for the fingerprint library, which takes {} "
                        "characters",
                        path, kPathBuffer - 1));
    std::array<char, kPathBuffer> file{};
    path.copy(file.data(), path.size());
    std::array<char, kTextBuffer> text{};
    std::int32_t reserved = 0;
    std::int32_t kind = printImage ? 1 : 0;
    std::int32_t log = IsLogWanted() ? 1 : 0;
    if (function_(file.data(), text.data(), &reserved, &kind, &log) != 0) {
        refused_ = true;
        TheDialogs().MsgBox("Invalid file format, please call Velquist", kCritical,
                            "Finger print error");
    }
    return TextIn(text);
}

std::string Sealer::Seal(const std::string& path, bool printImage) {
    return IsLocal() ? SealLocally(path, printImage, DigestOfFile(path))
                     : SealByLibrary(path, printImage);
}

std::string Sealer::Seal(const OutFile& file, bool printImage) {
    if (!IsLocal() || !file.KeepsDigest()) return Seal(file.AsidePath(), printImage);
    return SealLocally(file.AsidePath(), printImage, file.Digest());
}

std::string Sealer::Notice() const {
    if (!refused_) return SealNotice();
    return fmt::format(
        "The government's fingerprint library {} reported an invalid file; the "
        "files cannot be submitted.",
        name_);
}

}  // namespace zolmara
