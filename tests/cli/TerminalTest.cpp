// What a file holds must not steer the terminal that it is shown on, and programs get it whole.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <stdlib.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <string_view>
#include <thread>

#include "cli/CliRunner.h"
#include "store/Dao.h"

namespace zolmara::test {
namespace {

/// The controlling end of a terminal, and the name of the other end.
class Terminal {
public:
    Terminal() : master_(posix_openpt(O_RDWR | O_NOCTTY)) {
        if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0)
            throw std::runtime_error("no terminal");
        // Held open, what the program wrote stays to be read after its end.
        slave_ = open(Name().c_str(), O_RDWR | O_NOCTTY);
    }
    ~Terminal() {
        close(slave_);
        close(master_);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    std::string Name() const { return ptsname(master_); }
    /// All that is written to it up to `Close`, taken as it comes: a terminal holds a page, and
    /// behind that the program waits for its reader.
    std::string Written() const {
        std::string text;
        while (!text.ends_with(kLastWord)) {
            pollfd ready{.fd = master_, .events = POLLIN, .revents = 0};
            if (poll(&ready, 1, -1) < 0) break;
            std::array<char, 4096> buffer{};
            const ssize_t count = read(master_, buffer.data(), buffer.size());
            if (count <= 0) break;
            text.append(buffer.data(), static_cast<std::size_t>(count));
        }
        if (text.ends_with(kLastWord)) text.resize(text.size() - kLastWord.size());
        return text;
    }
    /// Nothing more comes. A terminal passes on what it was given some time after the writer went
    /// on, so its reader waits for a last word and not for a silence.
    void Close() const {
        if (write(slave_, kLastWord.data(), kLastWord.size()) !=
            static_cast<ssize_t>(kLastWord.size()))
            throw std::runtime_error("the terminal took no last word");
    }

private:
    static constexpr std::string_view kLastWord = "<no more is written>";

    int master_;
    int slave_;
};

class TerminalTest : public CliTest {
protected:
    TerminalTest() : crf_(NewCrf()) {
        Database db = DBEngine::OpenDatabase(crf_);
        db.Execute("UPDATE A SET CCName=? WHERE LineNum=8;", {kName});
        db.Execute("UPDATE CostCenters SET CCName=? WHERE LineNum=8;", {kName});
    }

    /// The output of a command on a terminal.
    std::string Shown(const std::vector<std::string>& words) {
        const Terminal terminal;
        CliSetting setting;
        setting.OutputFile = terminal.Name();
        std::string text;
        {
            const std::jthread reader([&] { text = terminal.Written(); });
            Run(words, setting);
            terminal.Close();
        }
        return text;
    }

    /// It clears the screen, by the one byte form as well, rings and goes back; the quotes and the
    /// comma are CSV's own.
    static constexpr const char* kName =
        "a\x1b[2J\xc2\x9b"
        "2J\x07\x08\x7f\"b\", c\nd";
    const std::string crf_;
};

bool MaySteer(const std::string& text) {
    return text.find_first_of("\x1b\x07\x08\x7f") != std::string::npos ||
           text.find("\xc2\x9b") != std::string::npos;
}

TEST_F(TerminalTest, NoFormOfAnyCommandSteersIt) {
    for (const char* format : {"text", "csv", "json"}) {
        const std::vector<std::vector<std::string>> commands = {
            {"show", crf_, "A"},
            {"get", crf_, "A", "8", "CCName"},
            {"cc", "list", crf_},
            {"find", crf_, "a"},
            {"explain", crf_, "A", "100", "1", "--depth", "5"},
            {"trace", crf_, "A", "100", "1"},
            {"summary", crf_},
            {"check", crf_}};
        for (auto words : commands) {
            words.insert(words.end(), {"--format", format});
            const std::string shown = Shown(words);
            EXPECT_FALSE(MaySteer(shown)) << words.front() << " " << format;
            EXPECT_FALSE(shown.empty()) << words.front() << " " << format;
        }
    }
}

TEST_F(TerminalTest, CsvToAFileHoldsEveryCharacterByRfc4180) {
    const std::string text = Do({"get", crf_, "A", "8", "CCName", "--format", "csv"});
    EXPECT_EQ(text,
              "\"a\x1b[2J\xc2\x9b"
              "2J\x07\x08\x7f\"\"b\"\", c\nd\"\n");
}

TEST_F(TerminalTest, CsvOnATerminalIsTheSameRowWithoutWhatSteers) {
    EXPECT_EQ(Shown({"get", crf_, "A", "8", "CCName", "--format", "csv"}),
              "\"a?[2J?2J???\"\"b\"\", c d\"\r\n");
}

TEST_F(TerminalTest, JsonHoldsEveryCharacterEscaped) {
    const CliResult result = Run({"get", crf_, "A", "8", "CCName", "--format", "json"});
    EXPECT_FALSE(MaySteer(result.Out));
    EXPECT_EQ(result.Json().get<std::string>(), kName);
}

}  // namespace
}  // namespace zolmara::test
