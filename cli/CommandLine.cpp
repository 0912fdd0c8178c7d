#include "cli/CommandLine.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <map>
#include <memory>
#include <span>
#include <stdexcept>

#include "cli/CliHost.h"
#include "cli/DashedWords.h"
#include "cli/Output.h"
#include "core/Globals.h"
#include "core/Host.h"
#include "core/StandardFiles.h"
#include "store/CommitsOfRun.h"
#include "store/PlainWords.h"
#include "store/RunStopped.h"
#include "store/session/Session.h"
#include "worksheets/CrfMaker.h"

namespace zolmara::cli {

namespace {

/// The options that every command takes.
struct CommonOptions {
    bool Quiet = false;
    bool Yes = false;
    bool No = false;
    std::string Settings;
    std::string Format = "text";
};

/// The arguments that go into a file as text. Paths may be of any bytes.
constexpr std::string_view kTextArguments[] = {"NAME",   "CCN",     "VALUE",  "TEXT",
                                               "--name", "--first", "--last", "--title"};

void CheckText(std::string_view argument, const std::string& text) {
    if (std::ranges::find(kTextArguments, argument) == std::end(kTextArguments)) return;
    if (!IsValidUtf8(text))
        throw CommandLineError{fmt::format("{} must be text in UTF-8", argument)};
}

/// The arguments that name a file or a folder. An empty text would be the present folder to some
/// and a file of no name to others.
constexpr std::string_view kPathArguments[] = {"FILE",   "TEXTFILE", "SOURCE", "OTHER",    "OUT",
                                               "--from", "--out",    "--pdf",  "--save-as"};

void CheckPath(std::string_view argument, const std::string& text) {
    if (std::ranges::find(kPathArguments, argument) == std::end(kPathArguments)) return;
    if (text.empty()) throw CommandLineError{fmt::format("{} must not be empty", argument)};
}

/// What one command's arguments were given as, kept until the command runs.
struct Given {
    const Command* Which = nullptr;
    CLI::App* App = nullptr;
    std::vector<std::string> Texts;
    std::vector<std::vector<std::string>> Lists;  ///< of the arguments that take several
    std::vector<CLI::Option*> Options;

    Inputs Collect() {
        Inputs inputs;
        for (std::size_t i = 0; i < Options.size(); ++i) {
            if (!Which->Arguments[i].Name.starts_with("-")) TakeMarksOff(i);
            CheckText(Which->Arguments[i].Name, Texts[i]);
            if (Options[i]->count() > 0) CheckPath(Which->Arguments[i].Name, Texts[i]);
        }
        for (std::size_t i = 0; i < Options.size(); ++i) {
            const Argument& argument = Which->Arguments[i];
            if (argument.Kind == ArgumentKind::Several)
                inputs.GiveSeveral(argument.Name, Lists[i]);
            else if (Options[i]->count() > 0)
                inputs.Give(argument.Name, Texts[i]);
        }
        return inputs;
    }

private:
    void TakeMarksOff(std::size_t argument) {
        Texts[argument] = WithoutMark(Texts[argument]);
        for (std::string& text : Lists[argument]) text = WithoutMark(text);
    }
};

constexpr std::string_view kFooter =
    "Exit status: 0 done; 1 the command line is wrong; 2 refused, or there are messages;\n"
    "3 blocked by a Non-Fatal Error; 4 the file could not be read or written; 5 the run stopped\n"
    "part way, and what was finished stands, as its message says.";

void AddCommonOptions(CLI::App& app, CommonOptions& options) {
    app.add_flag("--quiet", options.Quiet, "No progress on standard error");
    auto* yes = app.add_flag("--yes", options.Yes, "Answer every question with Yes");
    app.add_flag("--no", options.No, "Answer every question with No")->excludes(yes);
    app.add_option("--settings", options.Settings, "Use this settings file")->option_text("FILE");
    app.add_option("--format", options.Format, "Form of the output: text, csv or json")
        ->option_text("text|csv|json")
        ->check(CLI::IsMember({"text", "csv", "json"}));
    app.set_version_flag("--version", std::string(kProductName) + " " + gVersion,
                         "Print the version and exit");
}

CLI::Option* AddArgument(CLI::App& app, const Argument& argument, std::string& text,
                         std::vector<std::string>& list) {
    const std::string name(argument.Name);
    const std::string help(argument.Help);
    switch (argument.Kind) {
        case ArgumentKind::Flag:
            return app.add_flag(name, help);
        case ArgumentKind::Required:
            return app.add_option(name, text, help)->required()->option_text(" ");
        case ArgumentKind::Optional:
            return app.add_option(name, text, help)->option_text(" ");
        case ArgumentKind::Needed:
            return app.add_option(name, text, help)->required()->option_text("VALUE, required");
        case ArgumentKind::Option:
            return app.add_option(name, text, help)->option_text("VALUE");
        case ArgumentKind::Several:
            return app.add_option(name, list, help)->option_text("...");
    }
    throw std::logic_error("an argument of no kind");
}

std::string FooterOf(const Command& command) {
    std::string footer(command.Details);
    if (!footer.empty()) footer += "\n\n";
    return footer +
           "The options of every command and the exit status are told by zolmara-cli --help.";
}

using Words = std::span<const char* const>;

bool IsAmong(Words words, std::string_view text) {
    return std::ranges::any_of(words, [&](std::string_view word) { return word == text; });
}

/// True where all commands must be known: where they are listed, and where none is named. Making
/// one with its options takes longer than many a command runs.
bool MeansAllCommands(Words words) {
    const bool help = std::ranges::any_of(words, [](std::string_view word) {
        return word.starts_with("-h") || word.starts_with("--help");
    });
    const bool named = std::ranges::any_of(AllCommands(), [&](const Command* command) {
        return IsAmong(words, command->FirstWord());
    });
    const bool versionAlone = words.size() == 1 && IsAmong(words, "--version");
    return help || (!named && !versionAlone);
}

class CommandLine {
public:
    /// A command that no word is the name of cannot be meant, and is left out.
    explicit CommandLine(Words words)
        : app_("Prepares a Medicare Home Office Cost Statement, Form CMS-287-22.") {
        app_.name("zolmara-cli");
        app_.require_subcommand(0, 1);
        app_.fallthrough();
        app_.footer(std::string(kFooter));
        app_.get_formatter()->label("SUBCOMMAND", "COMMAND");
        AddCommonOptions(app_, common_);
        const bool all = MeansAllCommands(words);
        for (const Command* command : AllCommands())
            if (all || IsAmong(words, command->FirstWord())) AddCommand(*command);
    }

    /// Status of the command line itself; kDone leaves the chosen command in Chosen().
    int Parse(Words words) {
        auto marked = MarkTexts(words);
        std::ranges::reverse(marked);  // as the library wants them
        try {
            app_.parse(std::move(marked));
            return kDone;
        } catch (const CLI::Success& help) {
            ended_ = true;
            return app_.exit(help);
        } catch (const CLI::ParseError& error) {
            throw CommandLineError{WithoutMarks(error.what())};
        }
    }
    bool Ended() const { return ended_; }
    const CommonOptions& Common() const { return common_; }

    Given& Chosen() const {
        for (const auto& given : given_)
            if (given->App->parsed()) return *given;
        throw CommandLineError{"A command is required; zolmara-cli --help lists them"};
    }

private:
    /// The group of a command such as "cc add", made with its first command.
    CLI::App* GroupNamed(const std::string& name) {
        if (const auto made = groups_.find(name); made != groups_.end()) return made->second;
        for (const CommandGroup& group : AllCommandGroups()) {
            if (group.Name != name) continue;
            CLI::App* app = app_.add_subcommand(name, std::string(group.Summary));
            app->group("Commands");
            app->require_subcommand(1);
            app->fallthrough();
            app->get_formatter()->label("SUBCOMMAND", "COMMAND");
            return groups_[name] = app;
        }
        throw std::logic_error("a command of no group");
    }

    void AddCommand(const Command& command) {
        const auto first = command.FirstWord();
        const bool grouped = first != command.Name;
        CLI::App* parent = grouped ? GroupNamed(std::string(first)) : &app_;
        const auto word = grouped ? first.size() + 1 : 0;

        auto given = std::make_unique<Given>();
        given->Which = &command;
        given->App = parent->add_subcommand(std::string(command.Name.substr(word)),
                                            std::string(command.Summary));
        given->App->group("Commands");
        given->App->fallthrough();
        given->App->footer(FooterOf(command));
        given->Texts.resize(command.Arguments.size());
        given->Lists.resize(command.Arguments.size());
        for (std::size_t i = 0; i < command.Arguments.size(); ++i)
            given->Options.push_back(
                AddArgument(*given->App, command.Arguments[i], given->Texts[i], given->Lists[i]));
        given_.push_back(std::move(given));
    }

    CLI::App app_;
    CommonOptions common_;
    std::map<std::string, CLI::App*> groups_;
    std::vector<std::unique_ptr<Given>> given_;
    bool ended_ = false;
};

void Complain(std::string_view text) {
    TheCliHost().ClearProgress();
    PutError(fmt::format("ERROR\t{}\n", OneLine(text)));
}

void Prepare(const CommonOptions& options) {
    CliHost::Options host;
    host.Quiet = options.Quiet;
    if (options.Yes) host.Answer = Answers::Yes;
    if (options.No) host.Answer = Answers::No;
    host.SettingsPath = options.Settings;
    TheCliHost().SetOptions(host);
    InstallHost(&TheCliHost());
    SetFormat(options.Format == "csv"    ? OutputFormat::Csv
              : options.Format == "json" ? OutputFormat::Json
                                         : OutputFormat::Text);
    HandCrfMaker();
    StartUp();
}

int TryChosen(Given& chosen) {
    try {
        const int status = chosen.Which->Run(chosen.Collect());
        const bool messages = TheCliHost().MessageCount() > 0;
        return status == kDone && messages ? kRefusedOrMessages : status;
    } catch (const RunStopped& stopped) {
        Complain(PlainWords(stopped));
        return kStopped;
    } catch (const StoreError& error) {
        Complain(PlainWords(error));
        return error.IsFileError() ? kFileTrouble : kRefusedOrMessages;
    } catch (const std::exception& error) {
        Complain(PlainWords(error));
        return kRefusedOrMessages;
    }
}

int RunChosen(Given& chosen) {
    const int status = TryChosen(chosen);
    if (CommitsOfRun() > 0) TheCliHost().SaveFolders();
    DropCrf();
    return status;
}

/// Output that could not be written is no success.
int FinishOutput(int status) {
    TheCliHost().ClearProgress();
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return status;
    Complain(fmt::format("Standard output could not be written: {}", std::strerror(errno)));
    return kFileTrouble;
}

}  // namespace

std::string Inputs::Text(std::string_view name) const {
    const auto found = values_.find(std::string(name));
    return found == values_.end() ? std::string() : found->second;
}

std::vector<std::string> Inputs::Texts(std::string_view name) const {
    const auto found = several_.find(std::string(name));
    return found == several_.end() ? std::vector<std::string>() : found->second;
}

void Inputs::GiveSeveral(std::string_view name, std::vector<std::string> values) {
    several_[std::string(name)] = std::move(values);
}

void Inputs::Give(std::string_view name, std::string value) {
    values_[std::string(name)] = std::move(value);
}

int RunCommandLine(int count, const char* const* words) {
    HoldStandardFiles();
    // A file limit or a closed pipe is an error to report, not a reason to die in the middle.
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
    const Words all = Words(words, static_cast<std::size_t>(count)).subspan(count > 0 ? 1 : 0);
    CommandLine line(all);
    int status = kDone;
    try {
        status = line.Parse(all);
        if (!line.Ended()) {
            Given& chosen = line.Chosen();
            Prepare(line.Common());
            status = RunChosen(chosen);
        }
    } catch (const CommandLineError& error) {
        Complain(error.Text);
        status = kWrongCommandLine;
    }
    return FinishOutput(status);
}

}  // namespace zolmara::cli
