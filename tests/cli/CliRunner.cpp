#include "cli/CliRunner.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "support/Paths.h"

namespace zolmara::test {

namespace {

struct Pipe {
    std::array<int, 2> Ends{};
    Pipe() {
        if (pipe(Ends.data()) != 0) throw std::runtime_error("no pipe");
    }
    int Read() const { return Ends[0]; }
    int Write() const { return Ends[1]; }
};

[[noreturn]] void BeTheProgram(std::vector<std::string>& words, const std::string& config,
                               const CliSetting& setting, const Pipe& out, const Pipe& err) {
    setenv("XDG_CONFIG_HOME", config.c_str(), 1);
    setenv("XDG_DATA_HOME", (config + "/data").c_str(), 1);
    const auto take = [](const std::string& file, const Pipe& pipe, int as) {
        dup2(file.empty() ? pipe.Write() : open(file.c_str(), O_WRONLY | O_CREAT, 0600), as);
    };
    take(setting.OutputFile, out, STDOUT_FILENO);
    take(setting.ErrorFile, err, STDERR_FILENO);
    for (const Pipe* pipe : {&out, &err})
        for (const int end : pipe->Ends) close(end);
    if (setting.FileLimit >= 0) {
        const auto limit = static_cast<rlim_t>(setting.FileLimit);
        const rlimit limits{limit, limit};
        setrlimit(RLIMIT_FSIZE, &limits);
        std::signal(SIGXFSZ, SIG_IGN);
    }
    if (setting.Faults) PutFaultsIntoEnvironment(*setting.Faults);
    if (setting.NoStandardFiles)
        for (const int file : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) close(file);
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    execv(setting.Program.empty() ? kCli : setting.Program.c_str(), arguments.data());
    _exit(127);
}

/// Reads both ends until they close.
void Collect(int outEnd, int errEnd, CliResult& result) {
    std::array<pollfd, 2> ends{pollfd{outEnd, POLLIN, 0}, pollfd{errEnd, POLLIN, 0}};
    std::array<std::string*, 2> texts{&result.Out, &result.Err};
    for (int open = 2; open > 0;) {
        poll(ends.data(), ends.size(), -1);
        for (std::size_t i = 0; i < ends.size(); ++i) {
            if (ends[i].fd < 0 || ends[i].revents == 0) continue;
            std::array<char, 4096> buffer{};
            const ssize_t count = read(ends[i].fd, buffer.data(), buffer.size());
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
    Pipe out;
    Pipe err;
    const pid_t child = fork();
    if (child == 0) BeTheProgram(words, File("config"), setting, out, err);
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
