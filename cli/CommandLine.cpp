#include "cli/CommandLine.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <memory>

#include "cli/CliHost.h"
#include "cli/Output.h"
#include "core/Globals.h"
#include "store/Session.h"

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

/// What one command's arguments were given as, kept until the command runs.
struct Given {
    const Command* Which = nullptr;
    CLI::App* App = nullptr;
    std::vector<std::string> Texts;
    std::vector<CLI::Option*> Options;

    Inputs Collect() const {
        Inputs inputs;
        for (std::size_t i = 0; i < Options.size(); ++i)
            if (Options[i]->count() > 0) inputs.Give(Which->Arguments[i].Name, Texts[i]);
        return inputs;
    }
};

constexpr std::string_view kFooter =
    "Exit status: 0 done; 1 the command line is wrong; 2 refused, or there are messages;\n"
    "3 blocked by a Non-Fatal Error; 4 the file could not be read or written.";

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

CLI::Option* AddArgument(CLI::App& app, const Argument& argument, std::string& text) {
    const std::string name(argument.Name);
    const std::string help(argument.Help);
    switch (argument.Kind) {
        case ArgumentKind::Flag:
            return app.add_flag(name, help);
        case ArgumentKind::Required:
        case ArgumentKind::Needed:
            return app.add_option(name, text, help)->required()->option_text("");
        default:
            return app.add_option(name, text, help)->option_text("");
    }
}

class CommandLine {
public:
    CommandLine() : app_("Prepares a Medicare Home Office Cost Statement, Form CMS-287-22.") {
        app_.name("zolmara-cli");
        app_.require_subcommand(1);
        app_.fallthrough();
        app_.footer(std::string(kFooter));
        AddCommonOptions(app_, common_);
        for (const CommandGroup& group : AllCommandGroups()) AddGroup(group);
        for (const Command* command : AllCommands()) AddCommand(*command);
    }

    /// Status of the command line itself; kDone leaves the chosen command in Chosen().
    int Parse(int count, const char* const* words) {
        try {
            app_.parse(count, words);
            return kDone;
        } catch (const CLI::ParseError& error) {
            const int status = app_.exit(error);
            ended_ = true;
            return status == 0 ? kDone : kWrongCommandLine;
        }
    }
    bool Ended() const { return ended_; }
    const CommonOptions& Common() const { return common_; }

    const Given& Chosen() const {
        for (const auto& given : given_)
            if (given->App->parsed()) return *given;
        throw CommandLineError{"A command is required"};
    }

private:
    void AddGroup(const CommandGroup& group) {
        CLI::App* app = app_.add_subcommand(std::string(group.Name), std::string(group.Summary));
        app->require_subcommand(1);
        app->fallthrough();
    }

    void AddCommand(const Command& command) {
        const auto blank = command.Name.find(' ');
        CLI::App* parent = &app_;
        if (blank != std::string_view::npos)
            parent = app_.get_subcommand(std::string(command.Name.substr(0, blank)));
        const auto word = blank == std::string_view::npos ? 0 : blank + 1;

        auto given = std::make_unique<Given>();
        given->Which = &command;
        given->App = parent->add_subcommand(std::string(command.Name.substr(word)),
                                            std::string(command.Summary));
        given->App->fallthrough();
        if (!command.Details.empty()) given->App->footer(std::string(command.Details));
        given->Texts.resize(command.Arguments.size());
        for (std::size_t i = 0; i < command.Arguments.size(); ++i)
            given->Options.push_back(
                AddArgument(*given->App, command.Arguments[i], given->Texts[i]));
        given_.push_back(std::move(given));
    }

    CLI::App app_;
    CommonOptions common_;
    std::vector<std::unique_ptr<Given>> given_;
    bool ended_ = false;
};

void Complain(std::string_view text) {
    TheCliHost().ClearProgress();
    fmt::print(stderr, "ERROR\t{}\n", OneLine(text));
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
    StartUp();
}

int RunChosen(const Given& chosen) {
    try {
        const int status = chosen.Which->Run(chosen.Collect());
        DropCrf();
        if (status == kDone && TheCliHost().MessageCount() > 0) return kRefusedOrMessages;
        return status;
    } catch (const StoreError& error) {
        Complain(error.what());
        return error.IsFileError() ? kFileTrouble : kRefusedOrMessages;
    } catch (const CommandLineError& error) {
        Complain(error.Text);
        return kWrongCommandLine;
    } catch (const std::exception& error) {
        Complain(error.what());
        return kRefusedOrMessages;
    }
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

void Inputs::Give(std::string_view name, std::string value) {
    values_[std::string(name)] = std::move(value);
}

int RunCommandLine(int count, const char* const* words) {
    // A file limit or a closed pipe is an error to report, not a reason to die in the middle.
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
    CommandLine line;
    const int status = line.Parse(count, words);
    if (line.Ended()) return FinishOutput(status);
    try {
        Prepare(line.Common());
    } catch (const StoreError& error) {
        Complain(error.what());
        return kFileTrouble;
    }
    return FinishOutput(RunChosen(line.Chosen()));
}

}  // namespace zolmara::cli
