#include "config/BuiltInSettings.h"
#include "config/PreferencesStore.h"
#include "config/SettingsBlocks.h"
#include "config/SettingsUpgrade.h"
#include "platform/Utf8.h"

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

// Any text as a settings file. The first byte chooses what it is made of: the bytes as they are, or
// pieces of the texts that the upgrade looks for, which random bytes would hardly ever hit.

namespace {

using namespace tavrel;

void check(bool holds, const char* what)
{
    if (holds)
        return;
    std::cerr << "broken: " << what << '\n';
    std::abort();
}

/// Pieces of settings; each byte stands for one of them or for itself.
std::string textOfPieces(std::string_view bytes)
{
    static const std::string_view pieces[] = {
        "{",
        "}",
        "\n",
        "\n  ",
        " ",
        "\"",
        "\\",
        "# ",
        "/* ",
        " */",
        "\r\n",
        "\t",
        "a: 1",
        "editor",
        "editor: {",
        "terminal:",
        "terminal",
        "sidebar:",
        "sidebar",
        "colors",
        "colors: {",
        "keys",
        "keys: {",
        "toolbar: {",
        "\n  keys:",
        "\n}",
        "tabWidth: ",
        "fontSize: ",
        "cursor: 1",
        "extensionModes: {",
        "link: \"a\"",
        "\u2028",
        "{\n  ",
        "\n  }",
        "\n  extensionModes: {",
        "[",
        "]",
        "\u0085",
        "\n  languageExtensions: {",
    };
    constexpr std::size_t count = std::size(pieces);
    std::string text;
    for (const char byte : bytes) {
        const auto number = static_cast<std::uint8_t>(byte);
        if (number < 2 * count)
            text += pieces[number % count];
        else
            text += byte;
    }
    return text;
}

bool parses(const std::string& text)
{
    return PreferencesStore::parseSettings(text).has_value();
}

bool holdsOldBlock(const std::string& text)
{
    return text.find("\n  extensionModes:") != std::string::npos ||
           text.find("\n  languageExtensions:") != std::string::npos;
}

/// The upgrade, with what it promises checked.
std::string upgraded(const std::string& text)
{
    const auto result = upgradedSettings(text);
    check(!result || parses(text), "only a text that parses is upgraded");
    check(!result || parses(*result), "what comes out parses");
    check(!result || *result != text, "an upgrade changes something");
    check(!result || isValidUtf8(*result) || !isValidUtf8(text), "UTF-8 stays UTF-8");
    return result.value_or(text);
}

void checkBlocks(const std::string& text)
{
    const auto braces = bracesBehind(text, text.size() / 2);
    check(!braces || (text[braces->open] == '{' && text[braces->close] == '}' &&
                      braces->open < braces->close && braces->open >= text.size() / 2),
          "braces are braces");
    check(withoutBlock(text, "extensionModes").size() <= text.size(), "a removal shortens");
    check(withLinesInBlock(text, "editor", {}) == text, "no lines, no change");
    check(withBlocks(text, "b").size() > text.size(), "blocks are always inserted");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::string text = data[0] % 2 == 0 ? std::string(bytes) : textOfPieces(bytes);
    checkBlocks(text);
    const std::string twice = upgraded(upgraded(text));
    // Each upgrade takes away one block of a name; the rest settles in two.
    if (!holdsOldBlock(twice) && !holdsOldBlock(upgraded(text)))
        check(upgraded(twice) == twice, "a third upgrade changes nothing");
    return 0;
}
