#include "app/command_line.h"

#include <string_view>

#include "core/version.h"

std::optional<CommandLineAnswer> answerCommandLine(int argc, const char* const* argv) {
    for (int k = 1; k < argc; ++k) {
        const std::string_view arg(argv[k]);
        if (arg == "--version" || arg == "-v")
            return CommandLineAnswer{std::string("refraction ") + REFRACTION_VERSION, 0};
        if (arg == "--help" || arg == "-h")
            return CommandLineAnswer{
                "Usage: refraction [--version | --help]  (teaching program on the law of refraction; "
                "press F1 in any window for its help)",
                0};
    }
    return std::nullopt;
}
