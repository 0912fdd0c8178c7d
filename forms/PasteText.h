#pragma once

// Numbers as spreadsheets write them.

#include <string>
#include <string_view>

namespace zolmara {

/// The text of a number as it is keyed: blanks of every kind, "$" and thousands signs taken out,
/// a sign behind the number put ahead of it, "-" alone for nothing. "(1,234)" is "-1234". A text
/// that is no such number comes back without the blanks around it.
std::string PlainNumber(std::string_view pasted);

/// The text without the blanks, tabs, line ends and hard blanks around it.
std::string PlainText(std::string_view pasted);

}  // namespace zolmara
