#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <functional>
#include <stdexcept>
#include <string>

#include "core/SharedLibrary.h"
#include "support/Paths.h"

namespace zolmara::test {
namespace {

std::string MessageOf(const std::function<void()>& work) {
    try {
        work();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "";
}

TEST(SharedLibrary, AFunctionOfItIsFoundByItsName) {
    SharedLibrary library("libc.so.6");
    const auto length = reinterpret_cast<std::size_t (*)(const char*)>(library.Function("strlen"));
    EXPECT_EQ(length("four"), 4U);
}

TEST(SharedLibrary, OneThatIsNotThereIsNamed) {
    SharedLibrary library("libnotthere.so.1");
    EXPECT_TRUE(MessageOf([&] {
                    library.Load();
                }).starts_with("The library libnotthere.so.1 cannot be used: "));
    EXPECT_FALSE(MessageOf([&] { library.Function("strlen"); }).empty()) << "asked again";
}

TEST(SharedLibrary, AFunctionThatIsNotThereIsNamed) {
    SharedLibrary library("libc.so.6");
    EXPECT_EQ(MessageOf([&] { library.Function("not_there"); }),
              "The library libc.so.6 has no function not_there");
}

/// What the system's loader says it loads at the program's start.
TEST(SharedLibrary, AStartOfTheProgramLoadsNoneThatFewCommandsNeed) {
    const std::string command = "LD_TRACE_LOADED_OBJECTS=1 " + std::string(kCli) + " 2>&1";
    FILE* const pipe = popen(command.c_str(), "r");
    ASSERT_NE(pipe, nullptr);
    std::string loaded;
    std::array<char, 512> piece{};
    while (fgets(piece.data(), piece.size(), pipe)) loaded += piece.data();
    pclose(pipe);
    EXPECT_NE(loaded.find("libsqlite3"), std::string::npos) << loaded;
    for (const char* library : {"libcrypto", "libzip", "libxlsxwriter", "libicu", "libhpdf"})
        EXPECT_EQ(loaded.find(library), std::string::npos) << library;
}

}  // namespace
}  // namespace zolmara::test
