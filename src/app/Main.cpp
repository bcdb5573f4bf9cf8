#include "app/Application.h"
#include "app/ProgramOptions.h"

#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

namespace {

constexpr int badUsage = 2;

}  // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::current_path(error);
    const auto options = tavrel::programOptions(arguments, folder);
    if (!options) {
        std::fprintf(stderr, "tavrel-code: %s\nTry 'tavrel-code --help'.\n",
                     options.error().c_str());
        return badUsage;
    }
    if (options->showsHelp) {
        std::fputs(tavrel::helpText().c_str(), stdout);
        return 0;
    }
    if (options->showsVersion) {
        std::puts("Tavrel Code " TAVREL_VERSION);
        return 0;
    }
    return tavrel::runApplication(*options, argv[0]);
}
