#include "app/ProgramOptions.h"

#include <charconv>
#include <string_view>

namespace tavrel {

namespace {

constexpr int largestSide = 16384;

std::optional<int> side(std::string_view text)
{
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value < 1 ||
        value > largestSide)
        return std::nullopt;
    return value;
}

std::optional<WindowSize> windowSize(std::string_view text)
{
    const std::size_t cross = text.find('x');
    if (cross == std::string_view::npos)
        return std::nullopt;
    const std::optional<int> width = side(text.substr(0, cross));
    const std::optional<int> height = side(text.substr(cross + 1));
    if (!width || !height)
        return std::nullopt;
    return WindowSize{*width, *height};
}

// The value of an option that is written "--name VALUE" or "--name=VALUE".
class OptionReader {
public:
    explicit OptionReader(std::span<const std::string> arguments) : arguments_(arguments) {}

    bool isAtEnd() const { return index_ == arguments_.size(); }
    const std::string& next() { return arguments_[index_++]; }

    bool matches(const std::string& argument, const std::string& name)
    {
        value_.reset();
        if (argument.starts_with(name + "=")) {
            value_ = argument.substr(name.size() + 1);
            return true;
        }
        if (argument != name)
            return false;
        if (!isAtEnd())
            value_ = next();
        return true;
    }
    const std::optional<std::string>& value() const { return value_; }

private:
    std::span<const std::string> arguments_;
    std::size_t index_ = 0;
    std::optional<std::string> value_;
};

}  // namespace

tl::expected<ProgramOptions, std::string> programOptions(std::span<const std::string> arguments,
                                                         const std::filesystem::path& folder)
{
    ProgramOptions options;
    OptionReader reader(arguments);
    bool onlyFiles = false;
    while (!reader.isAtEnd()) {
        const std::string argument = reader.next();
        if (onlyFiles || !argument.starts_with("-") || argument == "-") {
            options.files.push_back((folder / argument).lexically_normal());
        } else if (argument == "--") {
            onlyFiles = true;
        } else if (argument == "--help") {
            options.showsHelp = true;
        } else if (argument == "--version") {
            options.showsVersion = true;
        } else if (reader.matches(argument, "--screenshot")) {
            if (!reader.value() || reader.value()->empty())
                return tl::unexpected(std::string("--screenshot needs the name of a file"));
            options.screenshot = folder / *reader.value();
        } else if (reader.matches(argument, "--results")) {
            if (!reader.value() || reader.value()->empty())
                return tl::unexpected(std::string("--results needs the name of a file"));
            options.results = (folder / *reader.value()).lexically_normal();
        } else if (reader.matches(argument, "--size")) {
            const std::optional<WindowSize> size = windowSize(reader.value().value_or(""));
            if (!size)
                return tl::unexpected(
                    std::string("--size needs a width and a height, as 1280x820"));
            options.size = *size;
        } else {
            return tl::unexpected("unknown option " + argument);
        }
    }
    return options;
}

std::string helpText()
{
    return "Usage: tavrel-code [options] [files]\n"
           "\n"
           "Opens the files, or an empty text, in a window.\n"
           "\n"
           "Options:\n"
           "  --results FILE     show FILE as search results: lines \"/path:12:\", and below\n"
           "                     each \"> 12: text\"; a click opens what a line names\n"
           "  --screenshot FILE  write a picture of the window to FILE (PNG) and end\n"
           "  --size WxH         the size of the window's contents, in pixels\n"
           "  --version          print the version and end\n"
           "  --help             print this text and end\n"
           "  --                 what follows are files, even with a leading \"-\"\n";
}

}  // namespace tavrel
