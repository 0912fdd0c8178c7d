#pragma once

// Libraries of the system that a few commands need. They are loaded with the first call into them,
// since every start of the program would wait for them otherwise.

namespace zolmara {

class SharedLibrary {
public:
    /// `file` is the name under which the system knows the library.
    explicit SharedLibrary(const char* file) : file_(file) {}

    /// Loads it, unless it is. std::runtime_error that names the file where it is not there.
    void Load();
    /// The function of this name, of a library that is loaded for it. Errors as of Load.
    void* Function(const char* name);

private:
    const char* file_;
    void* handle_ = nullptr;
};

SharedLibrary& CryptoLibrary();
SharedLibrary& XlsxLibrary();
SharedLibrary& ZipLibrary();

}  // namespace zolmara

/// What a function's own name is defined as, so that it is called as if it were linked: the
/// function of that name and of its declared type, looked up once at each place.
#define ZOLMARA_FUNCTION_OF(library, name)                                             \
    ([]() -> decltype(&::name) {                                                       \
        static const auto found =                                                      \
            reinterpret_cast<decltype(&::name)>(::zolmara::library().Function(#name)); \
        return found;                                                                  \
    }())
