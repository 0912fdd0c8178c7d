#pragma once

// Words of a command line that begin with "-": which are options, and which are what the person
// keys, such as the amount -inf or the text "- none -".

#include <span>
#include <string>
#include <vector>

namespace zolmara::cli {

/// The words, without the program's, with a mark on each that its command takes by position:
/// nothing marked reads as an option or a command. CommandLineError for what begins with "-" where
/// the command takes no text and is none of its options. Behind a word "--" nothing is an option.
std::vector<std::string> MarkTexts(std::span<const char* const> words);

/// A word as it was given.
std::string WithoutMark(const std::string& word);

/// A message that repeats words, as they were given.
std::string WithoutMarks(const std::string& message);

}  // namespace zolmara::cli
