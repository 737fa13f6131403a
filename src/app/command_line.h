#pragma once
#include <optional>
#include <string>

// `--version` and `--help` answer with one line and the program ends, as
// desktop programs do; anything else is left to the toolkit (-platform,
// -style ...) and the program starts.
struct CommandLineAnswer {
    std::string line;  // printed on standard output
    int status = 0;
};

std::optional<CommandLineAnswer> answerCommandLine(int argc, const char* const* argv);
