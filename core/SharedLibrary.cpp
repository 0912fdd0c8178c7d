#include "core/SharedLibrary.h"

#include <dlfcn.h>
#include <fmt/format.h>

#include <stdexcept>

namespace zolmara {

void SharedLibrary::Load() {
    if (handle_) return;
    handle_ = ::dlopen(file_, RTLD_LAZY | RTLD_LOCAL);
    if (handle_) return;
    const char* const reason = ::dlerror();
    throw std::runtime_error(fmt::format("The library {} cannot be used: {}", file_,
                                         reason ? reason : "no reason given"));
}

void* SharedLibrary::Function(const char* name) {
    Load();
    if (void* const found = ::dlsym(handle_, name)) return found;
    throw std::runtime_error(fmt::format("The library {} has no function {}", file_, name));
}

// The names are those of the libraries that the program was built with.

SharedLibrary& CryptoLibrary() {
    static SharedLibrary library(ZOLMARA_CRYPTO_LIBRARY);
    return library;
}

SharedLibrary& XlsxLibrary() {
    static SharedLibrary library(ZOLMARA_XLSX_LIBRARY);
    return library;
}

SharedLibrary& ZipLibrary() {
    static SharedLibrary library(ZOLMARA_ZIP_LIBRARY);
    return library;
}

}  // namespace zolmara
