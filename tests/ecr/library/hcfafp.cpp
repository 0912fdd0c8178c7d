// A fingerprint library for the tests. HCFAFP_MODE says how it behaves, HCFAFP_CALLS names the file
// that every call is written to.

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

namespace {

constexpr std::size_t kPathBuffer = 250;
constexpr std::size_t kTextBuffer = 100;

std::string Setting(const char* name) {
    const char* const value = std::getenv(name);
    return value ? value : "";
}

bool IsEmpty(const char* text) {
    for (std::size_t i = 0; i < kTextBuffer; ++i)
        if (text[i] != 0) return false;
    return true;
}

void WriteDown(const char* path, const char* text, std::int32_t reserved, std::int32_t kind,
               std::int32_t log) {
    std::ofstream calls(Setting("HCFAFP_CALLS"), std::ios::app);
    calls << path << '|' << (IsEmpty(text) ? "empty" : "filled") << '|' << reserved << '|' << kind
          << '|' << log << '\n';
}

bool Seals(const std::string& mode, std::int32_t kind) {
    static int images = 0;
    if (kind == 1) ++images;
    if (mode == "refuse") return false;
    if (mode == "no image") return kind != 1;
    return mode != "third image" || kind != 1 || images == 3;
}

}  // namespace

extern "C" std::int32_t HcfaFp(char* path, char* text, std::int32_t* reserved, std::int32_t* kind,
                               std::int32_t* log) {
    WriteDown(path, text, *reserved, *kind, *log);
    const std::string mode = Setting("HCFAFP_MODE");
    std::string fingerprint = *kind == 1 ? "PI:" : "ECR:";
    while (fingerprint.size() < kTextBuffer) fingerprint += "0123456789";
    if (mode == "short") fingerprint = std::string("short\xE9") + std::string(kTextBuffer, '\0');
    std::memcpy(text, fingerprint.data(), kTextBuffer);
    if (Seals(mode, *kind)) {
        std::ofstream file(path, std::ios::binary | std::ios::app);
        file << (*kind == 1 ? "***FINGERPRINT of the test" : "4 of the test") << "\r\n";
        if (mode == "early") file << std::string(100000, '*') << "\r\n";
    }
    std::memset(path, 'x', kPathBuffer);
    return mode == "refuse" || mode == "complain" ? 7 : 0;
}
