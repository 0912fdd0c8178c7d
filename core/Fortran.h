#pragma once

// The one formatter of the electronic cost report's fields. A format is a letter, a width and,
// for kind F, the decimals: "I16", "C36", "F16.6".

#include <string>
#include <string_view>

#include "core/Variant.h"

namespace zolmara {

/// A value in the fixed form of a field.
///
/// `format` begins with its kind, in either case: I whole number cut toward zero, M the same with
/// at least four digits, F fixed decimals, C upper-cased text, D mm/dd/yyyy, J yyyyddd, Z zip
/// code. Any other kind gives an empty text. `fill` is "0" or " ". A Null gives the width in fill
/// characters, whatever the kind. With `blankZero` a zero of kind I, or of kind F with the fill
/// " ", gives fill characters too.
///
/// Never fails: a number too wide loses its left side, a text its right side, a date that is none
/// is "0000000" under J, a bad zip code "00000-0000". The width of C counts characters, not bytes.
std::string Fortran(const Variant& value, std::string_view format, std::string_view fill,
                    bool blankZero);

/// The same; under kind C a value that is not Null is replaced by its text.
std::string Fortran(Variant& value, std::string_view format, std::string_view fill, bool blankZero);

/// Adds to a line what Fortran gives for a number in the format "I" of that width with blanks.
void AppendWhole(std::string& line, double number, std::size_t width);

}  // namespace zolmara
