#include "cli/CliRunner.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "support/Paths.h"

namespace zolmara::test {

namespace {

/// Other children that are started meanwhile do not hold it open.
struct Pipe {
    std::array<int, 2> Ends{};
    Pipe() {
        if (pipe2(Ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    }
    int Read() const { return Ends[0]; }
    int Write() const { return Ends[1]; }
};

/// A list of texts as the system takes it.
class TextList {
public:
    explicit TextList(std::vector<std::string> texts) : texts_(std::move(texts)) {
        for (std::string& text : texts_) pointers_.push_back(text.data());
        pointers_.push_back(nullptr);
    }
    TextList(const TextList&) = delete;
    TextList& operator=(const TextList&) = delete;

    char** Data() { return pointers_.data(); }

private:
    std::vector<std::string> texts_;
    std::vector<char*> pointers_;
};

/// This program's environment with some variables set anew.
std::vector<std::string> EnvironmentWith(const std::vector<std::string>& settings) {
    const auto nameOf = [](std::string_view setting) {
        return setting.substr(0, setting.find('='));
    };
    std::vector<std::string> all = settings;
    for (char** at = environ; *at; ++at)
        if (std::ranges::find(settings, nameOf(*at), nameOf) == settings.end())
            all.emplace_back(*at);
    return all;
}

std::vector<std::string> SettingsOf(const std::string& config, const CliSetting& setting) {
    std::vector<std::string> settings{"XDG_CONFIG_HOME=" + config,
                                      "XDG_DATA_HOME=" + config + "/data"};
    if (setting.Faults)
        for (const std::string& each : FaultEnvironment(*setting.Faults)) settings.push_back(each);
    return settings;
}

/// What the child needs, made ahead of it: behind a fork from among several threads nothing may
/// be allocated, since another thread may have held the allocator's lock at that moment.
struct Start {
    TextList Words;
    TextList Environment;
    std::string Program;
};

[[noreturn]] void BeTheProgram(Start& start, const CliSetting& setting, const Pipe& out,
                               const Pipe& err) {
    const auto take = [](const std::string& file, const Pipe& pipe, int as) {
        const int flags = O_WRONLY | O_CREAT | O_CLOEXEC;
        dup2(file.empty() ? pipe.Write() : open(file.c_str(), flags, 0600), as);
    };
    take(setting.OutputFile, out, STDOUT_FILENO);
    take(setting.ErrorFile, err, STDERR_FILENO);
    if (setting.FileLimit >= 0) {
        const auto limit = static_cast<rlim_t>(setting.FileLimit);
        const rlimit limits{limit, limit};
        setrlimit(RLIMIT_FSIZE, &limits);
        std::signal(SIGXFSZ, SIG_IGN);
    }
    if (setting.NoStandardFiles)
        for (const int file : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) close(file);
    execve(start.Program.c_str(), start.Words.Data(), start.Environment.Data());
    _exit(127);
}

/// Reads both ends until they close.
void Collect(int outEnd, int errEnd, CliResult& result) {
    std::array<pollfd, 2> ends{pollfd{outEnd, POLLIN, 0}, pollfd{errEnd, POLLIN, 0}};
    std::array<std::string*, 2> texts{&result.Out, &result.Err};
    for (int open = 2; open > 0;) {
        if (poll(ends.data(), ends.size(), -1) < 0 && errno != EINTR)
            throw std::runtime_error("no poll");
        for (std::size_t i = 0; i < ends.size(); ++i) {
            if (ends[i].fd < 0 || ends[i].revents == 0) continue;
            std::array<char, 4096> buffer{};
            const ssize_t count = read(ends[i].fd, buffer.data(), buffer.size());
            if (count < 0 && errno == EINTR) continue;
            if (count > 0) {
                texts[i]->append(buffer.data(), static_cast<std::size_t>(count));
            } else {
                close(ends[i].fd);
                ends[i].fd = -1;
                --open;
            }
        }
    }
}

}  // namespace

CliResult CliTest::Run(std::vector<std::string> words, const CliSetting& setting) {
    words.insert(words.begin(), "zolmara-cli");
    Start start{TextList(std::move(words)),
                TextList(EnvironmentWith(SettingsOf(File("config"), setting))),
                setting.Program.empty() ? kCli : setting.Program};
    const Pipe out;
    const Pipe err;
    const pid_t child = fork();
    if (child < 0) throw std::runtime_error("no process");
    if (child == 0) BeTheProgram(start, setting, out, err);
    close(out.Write());
    close(err.Write());
    CliResult result;
    Collect(out.Read(), err.Read(), result);
    int status = 0;
    waitpid(child, &status, 0);
    result.Status = WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
    return result;
}

std::string CliTest::Do(const std::vector<std::string>& words) {
    const CliResult result = Run(words);
    EXPECT_EQ(result.Status, 0) << words.front() << ": " << result.Err << result.Out;
    return result.Out;
}

std::string CliTest::NewCrf(std::string_view name) {
    const std::string path = File(name);
    Do({"new", path, "--number", "12-3456", "--start", "10/1/2022", "--name",
        "Sample Home Office"});
    return path;
}

std::string CliTest::SampleCrf() {
    const std::string path = File("Northfield.CRF");
    const std::string samples = kSamples;
    std::vector<std::string> words{"--quiet", "new", path};
    std::ifstream identity(samples + "/northfield.new");
    for (std::string line; std::getline(identity, line);)
        if (!line.starts_with("#")) words.push_back(line);
    Do(words);
    Do({"--quiet", "import", path, samples + "/northfield.txt"});
    Do({"--quiet", "calc", path});
    return path;
}

std::string CliTest::TextFile(std::string_view name, std::string_view content) {
    const std::string path = File(name);
    std::ofstream(path, std::ios::binary) << content;
    return path;
}

std::string ContentOf(const std::string& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

}  // namespace zolmara::test
