#pragma once

// An open CRF, and import files written for it.

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "core/Globals.h"
#include "import/ImportASCII.h"
#include "structure/Shape.h"
#include "support/TestCrf.h"

namespace zolmara::test {

/// A row of table Error.
struct Message {
    std::string Level;
    std::string Text;
    friend bool operator==(const Message&, const Message&) = default;
};
std::ostream& operator<<(std::ostream& out, const Message& message);

inline constexpr std::string_view kClosing =
    "Import complete, no errors found.  Please verify the imported data for accuracy.";

/// The message of a loader: rule, line feed, carriage return, and what names the row.
Message Refused(const std::string& sheet, const std::string& rule, const std::string& echo);

class ImportTest : public TestCrf {
protected:
    ImportTest() { ImportErrorFlag = false; }
    ~ImportTest() override { ImportErrorFlag = false; }

    std::string Write(std::string_view bytes);
    /// Imports bytes as they are.
    bool ImportBytes(std::string_view bytes);
    /// Imports lines whose fields are separated by a stroke.
    bool Import(std::initializer_list<std::string_view> lines);

    std::vector<Message> Messages();
    /// The staged rows, each as "worksheet|row|column|contents".
    std::vector<std::string> Staged();
    /// True where the closing message is the only one.
    bool IsClean();

    /// Imports one line and gives the rules that it breaks, in order.
    std::vector<std::string> RulesOf(std::string_view line);
    /// The one rule that a line breaks; empty for a good line.
    std::string RuleOf(std::string_view line);
};

}  // namespace zolmara::test
