#pragma once

// Programs that are started to be timed.

#include <functional>
#include <string>

namespace zolmara::bench {

/// A word of a command, safe from the shell.
std::string Quoted(const std::string& word);

/// Runs a command of the shell. Raises when it fails: what fails is no figure.
void RunCommand(const std::string& command);

/// Runs a command of the shell and gives what it prints. Raises when it fails.
std::string OutputOf(const std::string& command);

/// True when the shell finds the program.
bool IsInstalled(const std::string& program);

std::string ThisProgram();
/// A program beside this one; its path, also where it is not built.
std::string Beside(const std::string& name);

/// Does the work in a process of its own, which ends with it. Raises when it fails.
void InChild(const std::function<void()>& work);

/// The most memory that this process has had.
long PeakKilobytes();

/// How many calls that write this process has made.
long WritingCalls();

/// The shortest of several runs, in seconds: on a shared machine what the others took is least in
/// it. The CPU of programs that were started counts in.
struct Least {
    double Wall = 0;
    double Cpu = 0;
};
Least operator+(const Least& a, const Least& b);

/// `prepare` runs untimed ahead of each run.
Least LeastOf(int runs, const std::function<void()>& prepare, const std::function<void()>& work);
Least LeastOf(int runs, const std::function<void()>& work);

}  // namespace zolmara::bench
