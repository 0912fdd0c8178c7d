#pragma once

// A command of the command line as data: its name, its help, its arguments, and the procedure
// that carries it out. CommandLine.cpp reads them; nothing else knows how a command line looks.

#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zolmara::cli {

/// How a run ended, for the caller's shell.
enum ExitStatus : int {
    kDone = 0,
    kWrongCommandLine = 1,
    kRefusedOrMessages = 2,
    kBlocked = 3,      ///< by a "Non-Fatal Error" of the edit checks
    kFileTrouble = 4,  ///< the file could not be read or written
    kStopped = 5,      ///< part way; what was finished stands
};

enum class ArgumentKind {
    Required,  ///< by position
    Optional,  ///< by position, and may be left out
    Several,   ///< the rest by position, any number of them
    Option,    ///< "--name VALUE"
    Needed,    ///< "--name VALUE", and must be given
    Flag,      ///< "--name"
};

struct Argument {
    std::string_view Name;  ///< "FILE" by position, "--start" for an option or flag
    ArgumentKind Kind;
    std::string_view Help;
};

/// What was given for the arguments of a command.
class Inputs {
public:
    bool Has(std::string_view name) const { return values_.contains(std::string(name)); }
    /// The text given; empty when there was none.
    std::string Text(std::string_view name) const;
    /// The texts given for an argument that takes several.
    std::vector<std::string> Texts(std::string_view name) const;
    void Give(std::string_view name, std::string value);
    void GiveSeveral(std::string_view name, std::vector<std::string> values);

private:
    std::map<std::string, std::string> values_;
    std::map<std::string, std::vector<std::string>> several_;
};

struct Command {
    std::string_view Name;  ///< "calc", or group and name: "cc add"
    std::string_view Summary;
    std::string_view Details;  ///< at the end of the help; may be empty
    std::span<const Argument> Arguments;
    ExitStatus (*Run)(const Inputs& inputs);

    /// The name, or its group's.
    constexpr std::string_view FirstWord() const { return Name.substr(0, Name.find(' ')); }
};

/// A group of commands, such as "cc", that share their first word.
struct CommandGroup {
    std::string_view Name;
    std::string_view Summary;
};

/// All commands, in the order of the help.
std::span<const Command* const> AllCommands();
std::span<const CommandGroup> AllCommandGroups();

/// A wrong argument that only the command itself can see.
struct CommandLineError {
    std::string Text;
};

}  // namespace zolmara::cli
