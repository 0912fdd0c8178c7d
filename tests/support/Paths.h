#pragma once

// Where the tests find what lies outside them.

namespace zolmara::test {

extern const char* const kSamples;       ///< the folder of the sample home offices
extern const char* const kGolden;        ///< the folder of the printed pages to compare with
extern const char* const kCli;           ///< zolmara-cli
extern const char* const kGui;           ///< zolmara
extern const char* const kHcfafp;        ///< a fingerprint library
extern const char* const kEmptyLibrary;  ///< a library without the function
extern const char* const kFaultLibrary;  ///< lets a program's writes fail

}  // namespace zolmara::test
