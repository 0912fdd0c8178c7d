#pragma once

// The local seal: what seals the submission files where the government's fingerprint library is
// not at hand. It shows whether a file has been changed; the contractor does not accept it.

#include <cstddef>
#include <string>
#include <string_view>

namespace zolmara {

inline constexpr std::size_t kFingerprintLength = 76;

/// What a line of a sealed print image begins with.
inline constexpr std::string_view kPiFingerprintMark = "***FINGERPRINT";

/// Seals a file: appends a Type 4 record to an electronic report, a "***FINGERPRINT" line to a
/// print image. Gives the seal, "LOCALSEAL-1:" and the SHA-256 of the file as it was, in hex.
/// StoreError when the file cannot be read or written.
std::string SealLocally(const std::string& path, bool printImage);

}  // namespace zolmara
