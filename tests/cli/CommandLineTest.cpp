#include <sstream>

#include "cli/CliRunner.h"
#include "store/Dao.h"

namespace zolmara::test {

namespace {

using CommandLine = CliTest;

const std::vector<std::string> kCommands{
    "new",    "info",    "calc", "check",  "show",  "get",    "set",        "explain",  "trace",
    "sheets", "summary", "find", "import", "cells", "export", "import-crf", "cc",       "component",
    "line",   "rebuild", "diff", "backup", "print", "ecr",    "header",     "identity", "compact"};

/// The first words of the lines between two heads of a help text.
std::vector<std::string> WordsUnder(const std::string& help, const std::string& head) {
    std::vector<std::string> words;
    std::istringstream lines(help.substr(help.find(head) + head.size() + 1));
    for (std::string line; std::getline(lines, line) && line.starts_with("  ");)
        words.push_back(line.substr(2, line.find(' ', 2) - 2));
    return words;
}

struct HelpCase {
    std::vector<std::string> Command;
    std::vector<std::string> Arguments;
    std::vector<std::string> Options;
};

const std::vector<HelpCase> kHelp{
    {{"new"}, {"FILE"}, {"--number", "--start", "--end", "--name", "--from", "--with", "--force"}},
    {{"info"}, {"FILE"}, {}},
    {{"calc"}, {"FILE"}, {}},
    {{"check"}, {"FILE"}, {"--explain"}},
    {{"show"}, {"FILE", "ITEM"}, {}},
    {{"get"}, {"FILE", "ITEM", "LINE", "COLUMN"}, {}},
    {{"set"}, {"FILE", "ITEM", "LINE", "COLUMN", "VALUE"}, {}},
    {{"explain"}, {"FILE", "ITEM", "LINE", "COLUMN"}, {"--depth", "--uses"}},
    {{"trace"}, {"FILE", "ITEM", "LINE", "COLUMN"}, {}},
    {{"sheets"}, {"FILE"}, {}},
    {{"summary"}, {"FILE"}, {"--components"}},
    {{"find"}, {"FILE", "TEXT"}, {}},
    {{"import"}, {"FILE", "TEXTFILE"}, {}},
    {{"cells"}, {"FILE", "OUT"}, {"--template", "--force"}},
    {{"export"}, {"FILE", "OUT", "ITEM"}, {"--values", "--force"}},
    {{"import-crf"}, {"FILE", "SOURCE", "ITEM"}, {"--all", "--no-backup"}},
    {{"cc", "list"}, {"FILE"}, {}},
    {{"cc", "add"}, {"FILE", "LINE", "NAME"}, {"--whole", "--sub"}},
    {{"cc", "delete"}, {"FILE", "LINE"}, {}},
    {{"cc", "rename"}, {"FILE", "LINE", "NAME"}, {}},
    {{"component", "list"}, {"FILE", "PART"}, {}},
    {{"component", "add"}, {"FILE", "PART", "LINE", "NAME", "CCN"}, {"--whole", "--sub"}},
    {{"component", "delete"}, {"FILE", "PART", "LINE"}, {}},
    {{"component", "rename"}, {"FILE", "PART", "LINE", "NAME", "CCN"}, {}},
    {{"line", "add"}, {"FILE", "ITEM", "LINE"}, {"--whole", "--sub"}},
    {{"line", "delete"}, {"FILE", "ITEM", "LINE"}, {}},
    {{"rebuild"}, {"FILE", "ITEM"}, {"--no-backup"}},
    {{"diff"},
     {"FILE", "OTHER", "ITEM"},
     {"--keyed", "--over", "--over-percent", "--out", "--force"}},
    {{"print"}, {"FILE", "ITEM"}, {"--pdf", "--force"}},
    {{"ecr"}, {"FILE"}, {"--out", "--force", "--manual", "--first", "--last", "--title"}},
    {{"header"}, {"FILE", "N", "TEXT"}, {}},
    {{"identity"}, {"FILE"}, {"--number", "--start", "--end", "--name", "--save-as"}},
    {{"compact"}, {"FILE"}, {}},
};

TEST_F(CommandLine, HelpListsEveryCommandInItsOrder) {
    const std::string help = Do({"--help"});
    EXPECT_EQ(WordsUnder(help, "Commands:"), kCommands);
}

TEST_F(CommandLine, HelpTellsTheExitStatus) {
    const std::string help = Do({"--help"});
    for (const char* words : {"0 done", "1 the command line is wrong", "2 refused",
                              "3 blocked by a Non-Fatal Error", "4 the file could not be read"})
        EXPECT_NE(help.find(words), std::string::npos) << words;
}

TEST_F(CommandLine, HelpOfEachCommandNamesItsArguments) {
    for (const HelpCase& expected : kHelp) {
        auto words = expected.Command;
        words.push_back("--help");
        const std::string help = Do(words);
        EXPECT_EQ(WordsUnder(help, "Positionals:"), expected.Arguments) << expected.Command.back();
        auto options = WordsUnder(help, "Options:");
        ASSERT_FALSE(options.empty());
        options.erase(options.begin());
        EXPECT_EQ(options, expected.Options) << expected.Command.back();
    }
}

TEST_F(CommandLine, EveryPositionalThatMustBeGivenIsMissed) {
    for (const HelpCase& command : kHelp) {
        const CliResult result = Run(command.Command);
        EXPECT_EQ(result.Status, 1) << command.Command.back();
        EXPECT_NE(result.Err.find("required"), std::string::npos) << result.Err;
        EXPECT_EQ(result.Out, "");
    }
}

TEST_F(CommandLine, VersionNamesProgramAndVersion) {
    EXPECT_EQ(Do({"--version"}), "Zolmara 287-22 3.0.2\n");
}

TEST_F(CommandLine, NoCommandAndAnUnknownCommandAreWrong) {
    EXPECT_EQ(Run({}).Status, 1);
    const CliResult unknown = Run({"frobnicate"});
    EXPECT_EQ(unknown.Status, 1);
    EXPECT_NE(unknown.Err.find("frobnicate"), std::string::npos);
    EXPECT_EQ(Run({"cc"}).Status, 1);
    EXPECT_EQ(Run({"cc", "frobnicate"}).Status, 1);
}

TEST_F(CommandLine, TooManyArgumentsAreWrong) {
    EXPECT_EQ(Run({"info", File("x.CRF"), "more"}).Status, 1);
}

TEST_F(CommandLine, AnUnknownFormatIsWrong) {
    EXPECT_EQ(Run({"info", File("x.CRF"), "--format", "xml"}).Status, 1);
}

TEST_F(CommandLine, YesAndNoExcludeEachOther) {
    EXPECT_EQ(Run({"info", File("x.CRF"), "--yes", "--no"}).Status, 1);
}

// What is keyed is a text where the command takes one, whatever it begins with.
TEST_F(CommandLine, ATextThatBeginsWithADashIsAText) {
    const std::string crf = NewCrf();
    for (const std::string text : {"- none -", "-", "-x", "-inf", "-help", "get", "- 5"}) {
        Do({"header", crf, "1", text});
        EXPECT_EQ(Do({"get", crf, "HeaderLines", "1", "LineText"}), text + "\n");
    }
    Do({"component", "add", crf, "1", "1", "-Annex-", "14-0177"});
    EXPECT_EQ(Do({"get", crf, "S2p1", "1", "1"}), "-Annex-\n");
    Do({"component", "rename", crf, "1", "1", "-", "14-0178"});
    EXPECT_EQ(Do({"get", crf, "S2p1", "1", "1"}), "-\n");
    EXPECT_EQ(Do({"cc", "add", crf, "4", "-Fleet", "--sub"}), "4.01\n");
    Do({"cc", "rename", crf, "4.01", "- Vans", "--quiet"});
    EXPECT_EQ(Do({"get", crf, "CostCenters", "4.01", "CCName"}), "- Vans\n");
    EXPECT_EQ(Do({"find", crf, "- van", "--format", "csv"}),
              "item,line,column,value\nCostCenters,4.01,CCName,- Vans\n");
    Do({"identity", crf, "--name", "-Home-"});
    EXPECT_EQ(Do({"get", crf, "S1p1", "2", "1"}), "-Home-\n");
}

TEST_F(CommandLine, BehindTwoDashesNothingIsAnOption) {
    const std::string crf = NewCrf();
    Do({"header", crf, "1", "--", "--yes"});
    EXPECT_EQ(Do({"get", crf, "HeaderLines", "1", "LineText"}), "--yes\n");
    Do({"header", "--", crf, "1", "--"});
    EXPECT_EQ(Do({"get", crf, "HeaderLines", "1", "LineText"}), "--\n");
}

TEST_F(CommandLine, ALineThatIsNoneIsToldAsThat) {
    const CliResult result = Run({"get", NewCrf(), "A", "-x", "1"});
    EXPECT_EQ(result.Status, 1);
    EXPECT_EQ(result.Err, "ERROR\tLINE must be a line number such as 4 or 4.01, not -x\n");
}

TEST_F(CommandLine, AnOptionThatIsNoneIsNamed) {
    const std::string crf = NewCrf();
    const auto told = [&](std::vector<std::string> words) {
        const CliResult result = Run(std::move(words));
        EXPECT_EQ(result.Status, 1);
        EXPECT_EQ(result.Out, "");
        return result.Err;
    };
    const std::string rest = "; put -- ahead of words that begin with - and are none\n";
    EXPECT_EQ(told({"set", crf, "A", "8", "1", "--five"}),
              "ERROR\t--five is no option of set" + rest);
    EXPECT_EQ(told({"cc", "rename", crf, "4", "--sbu", "Vans"}),
              "ERROR\t--sbu is no option of cc rename" + rest);
    EXPECT_EQ(told({"calc", "-q", crf}), "ERROR\t-q is no option of calc" + rest);
    EXPECT_EQ(told({"print", crf, "A", "-x"}), "ERROR\t-x is no option of print" + rest);
    EXPECT_EQ(told({"info", crf, "--force"}), "ERROR\t--force is no option of info" + rest);
    EXPECT_EQ(told({"-x"}), "ERROR\t-x is no option" + rest);
}

// A name that is a command's, too, and one with a character that nobody keys.
TEST_F(CommandLine, WordsAreGivenOnAsTheyWere) {
    const std::string crf = NewCrf("calc");
    EXPECT_EQ(Do({"get", crf, "A", "1", "CCName"}), "CRC-B&F\n");
    const std::string odd = NewCrf("\x01odd.CRF");
    EXPECT_EQ(Do({"get", odd, "A", "1", "CCName"}), "CRC-B&F\n");
    Do({"cells", crf, File("calc.txt")});
    EXPECT_EQ(Run({"get", crf, "\x01", "1", "1"}).Status, 2);
}

TEST_F(CommandLine, AnEmptyFileNameIsWrong) { EXPECT_EQ(Run({"info", ""}).Status, 1); }

TEST_F(CommandLine, CommonOptionsStandAheadOfTheCommandOrBehind) {
    const std::string crf = NewCrf();
    EXPECT_EQ(Do({"--format", "json", "get", crf, "A", "1", "CCName"}), "\"CRC-B&F\"\n");
    EXPECT_EQ(Do({"get", crf, "A", "1", "CCName", "--format", "json"}), "\"CRC-B&F\"\n");
}

TEST_F(CommandLine, SettingsGoToTheFileThatIsNamed) {
    const std::string crf = NewCrf();
    const std::string settings = File("mine.ini");
    Do({"--settings", settings, "set", crf, "A", "1", "Col_1", "100"});
    EXPECT_NE(ContentOf(settings).find("CRFLoc"), std::string::npos);
}

TEST_F(CommandLine, ACommandThatChangesNothingWritesNoSettings) {
    const std::string crf = NewCrf();
    Do({"set", crf, "A", "1", "Col_1", "100"});
    Do({"calc", crf});
    const std::string settings = File("mine.ini");
    for (const std::vector<std::string>& words :
         std::vector<std::vector<std::string>>{{"info", crf},
                                               {"get", crf, "A", "1", "Col_1"},
                                               {"set", crf, "A", "1", "Col_1", "100"},
                                               {"set", crf, "A", "1", "Col_1", "ten"},
                                               {"calc", crf},
                                               {"info", File("missing.CRF")}}) {
        std::vector<std::string> all{"--settings", settings};
        all.insert(all.end(), words.begin(), words.end());
        Run(all);
        EXPECT_FALSE(std::filesystem::exists(settings)) << words.front();
    }
}

TEST_F(CommandLine, ANewFilesFolderIsRemembered) {
    const std::string settings = File("mine.ini");
    Do({"--settings", settings, "new", File("New.CRF"), "--number", "12-3456", "--start",
        "10/1/2022", "--name", "Sample Home Office"});
    EXPECT_EQ(ContentOf(settings),
              "[Zolmara 287-22/Startup]\nCRFLoc = " + FolderOf(File("New.CRF")) + "\n");
}

TEST_F(CommandLine, ACommandsNameAmongItsArgumentsIsAnArgument) {
    const std::string crf = NewCrf();
    Do({"header", crf, "1", "info"});
    EXPECT_EQ(Run({"info", crf, "calc"}).Status, 1);
    const CliResult unknown = Run({"inform", crf});
    EXPECT_EQ(unknown.Status, 1);
    EXPECT_NE(unknown.Err.find("inform"), std::string::npos) << unknown.Err;
}

TEST_F(CommandLine, TheVersionIsToldAloneAndBesideACommand) {
    const std::string version = Do({"--version"});
    EXPECT_TRUE(version.starts_with("Zolmara 287-22 ")) << version;
    EXPECT_EQ(Do({"info", "--version", File("missing.CRF")}), version);
}

TEST_F(CommandLine, HelpBesideACommandIsTheCommands) {
    EXPECT_EQ(Do({"--help", "info"}), Do({"info", "--help"}));
    EXPECT_EQ(Do({"info", "-h"}), Do({"info", "--help"}));
}

TEST_F(CommandLine, ProgressGoesToStandardErrorAndIsSilentWithQuiet) {
    const std::string crf = NewCrf();
    const CliResult loud = Run({"calc", crf});
    EXPECT_EQ(loud.Status, 0);
    EXPECT_EQ(loud.Out, "");
    EXPECT_NE(loud.Err.find("Calculating level 13: A\n"), std::string::npos) << loud.Err;
    EXPECT_EQ(loud.Err.find('\r'), std::string::npos);
    const CliResult quiet = Run({"--quiet", "calc", crf});
    EXPECT_EQ(quiet.Status, 0);
    EXPECT_EQ(quiet.Err, "");
}

TEST_F(CommandLine, MessagesThatNobodyTakesEndNoRun) {
    const std::string crf = NewCrf();
    Do({"set", crf, "A", "8", "1", "100"});
    CliSetting full;
    full.ErrorFile = "/dev/full";
    EXPECT_EQ(Run({"calc", crf}, full).Status, 0);
    EXPECT_EQ(Do({"get", crf, "A", "100", "5"}), "100\n");
    EXPECT_EQ(Run({"get", crf, "A", "8", "77"}, full).Status, 2);
    EXPECT_EQ(Run({"no such command"}, full).Status, 1);
}

TEST_F(CommandLine, AFileOfNoNameIsNoFile) {
    const std::string crf = NewCrf();
    const std::vector<std::pair<std::string, std::vector<std::string>>> commands{
        {"FILE", {"info", ""}},
        {"FILE", {"backup", "list", ""}},
        {"TEXTFILE", {"import", crf, ""}},
        {"SOURCE", {"import-crf", crf, "", "--all"}},
        {"OTHER", {"diff", crf, ""}},
        {"--out", {"diff", crf, crf, "--out", ""}},
        {"OUT", {"cells", crf, ""}},
        {"OUT", {"export", crf, ""}},
        {"--from", {"new", File("New.CRF"), "--from", ""}},
        {"--pdf", {"print", crf, "A", "--pdf", ""}},
        {"--out", {"ecr", crf, "--manual", "--out", ""}},
        {"--save-as", {"identity", crf, "--name", "N", "--save-as", ""}}};
    for (const auto& [name, words] : commands) {
        const CliResult result = Run(words);
        EXPECT_EQ(result.Status, 1) << words.front();
        EXPECT_EQ(result.Err, "ERROR\t" + name + " must not be empty\n") << words.front();
    }
}

// The first files that are opened would be standard output and error, and what is printed would
// go into them.
TEST_F(CommandLine, WithoutStandardFilesNothingIsPrintedIntoOtherFiles) {
    const std::string crf = NewCrf();
    Do({"set", crf, "A", "8", "1", "100"});
    CliSetting none;
    none.NoStandardFiles = true;
    EXPECT_EQ(Run({"calc", crf}, none).Status, 0);
    EXPECT_EQ(Do({"get", crf, "A", "100", "5"}), "100\n");
    EXPECT_EQ(Run({"compact", crf}, none).Status, 0);
    EXPECT_EQ(Run({"cells", crf, File("none.txt")}, none).Status, 0);
    Do({"cells", crf, File("all.txt")});
    EXPECT_EQ(ContentOf(File("none.txt")), ContentOf(File("all.txt")));
    // What was asked for and could not be shown is no success.
    EXPECT_EQ(Run({"show", crf, "A"}, none).Status, 4);
    EXPECT_FALSE(DBEngine::RepairDatabase(crf).WasDamaged);
}

TEST_F(CommandLine, ProgressDoesNotSteerATerminal) {
    const std::string crf = NewCrf();
    const std::string text = TextFile("a\033[2Jb\nc.txt", "A\t8\t1\t77\n");
    const CliResult result = Run({"import", crf, text});
    EXPECT_EQ(result.Status, 0) << result.Err;
    EXPECT_EQ(result.Err.find('\033'), std::string::npos) << result.Err;
    EXPECT_NE(result.Err.find("a?[2Jb c.txt Import ASCII:"), std::string::npos) << result.Err;
}

TEST_F(CommandLine, OutputThatCannotBeWrittenIsNoSuccess) {
    const std::string crf = NewCrf();
    CliSetting full;
    full.OutputFile = "/dev/full";
    const CliResult result = Run({"show", crf, "A"}, full);
    EXPECT_EQ(result.Status, 4);
    EXPECT_NE(result.Err.find("Standard output"), std::string::npos);
}

}  // namespace

}  // namespace zolmara::test
