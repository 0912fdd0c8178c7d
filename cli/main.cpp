#include "cli/CommandLine.h"

int main(int count, char** words) { return zolmara::cli::RunCommandLine(count, words); }
