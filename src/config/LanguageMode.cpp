#include "config/LanguageMode.h"

#include "config/ConfigText.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace tavrel {
namespace {

/// The shortest decimal text that reads as `number`, with an exponent only where it is far from 1.
std::string decimalText(double number)
{
    constexpr double smallestFixed = 1e-4;
    constexpr double largestFixed = 1e17;
    const double size = std::abs(number);
    const bool isFixed = size == 0 || (size >= smallestFixed && size < largestFixed);
    char buffer[64];
    const auto end =
        std::to_chars(std::begin(buffer), std::end(buffer), number,
                      isFixed ? std::chars_format::fixed : std::chars_format::scientific);
    return std::string(buffer, end.ptr);
}

/// The text that an element of a list stands for, so that bare words work in lists: the reader of
/// CSON makes booleans and numbers of some.
std::optional<std::string> textOfElement(const CSONValue& element)
{
    if (const auto text = element.string())
        return std::string(*text);
    if (element.isBoolean())
        return *element.boolean() ? "true" : "false";
    if (const auto number = element.unsignedInteger())
        return std::to_string(*number);
    if (element.isInteger())
        return std::to_string(*element.integer());
    if (element.isFloating())
        return decimalText(*element.number());
    return std::nullopt;
}

std::vector<std::string> textsOf(const CSONValue* list)
{
    std::vector<std::string> texts;
    if (!list)
        return texts;
    texts.reserve(list->elements().size());
    for (const CSONValue& element : list->elements()) {
        if (auto text = textOfElement(element))
            texts.push_back(std::move(*text));
    }
    return texts;
}

/// Sorted first: a set takes sorted texts in one pass.
std::set<std::string> setOf(std::vector<std::string> texts)
{
    std::ranges::sort(texts);
    return {std::make_move_iterator(texts.begin()), std::make_move_iterator(texts.end())};
}

std::set<std::string> lowercasedSetOf(std::vector<std::string> texts)
{
    for (std::string& text : texts)
        text = lowercasedUtf8(text);
    return setOf(std::move(texts));
}

std::vector<std::pair<std::string, std::string>> pairsOf(const CSONValue* list)
{
    std::vector<std::pair<std::string, std::string>> pairs;
    if (!list)
        return pairs;
    for (const CSONValue& element : list->elements()) {
        std::vector<std::string> texts = textsOf(&element);
        if (texts.size() == 2)
            pairs.emplace_back(std::move(texts[0]), std::move(texts[1]));
    }
    return pairs;
}

std::string textOr(const CSONValue* value, std::string_view fallback)
{
    return std::string(value ? value->string().value_or(fallback) : fallback);
}

}  // namespace

std::optional<LanguageMode> LanguageMode::fromValue(const CSONValue& value)
{
    const CSONValue* id = value.find("id");
    if (!id || !id->isString())
        return std::nullopt;
    LanguageMode mode;
    mode.id = *id->string();
    mode.name = textOr(value.find("name"), mode.id);
    mode.extensions = lowercasedSetOf(textsOf(value.find("extensions")));
    mode.keywords = setOf(textsOf(value.find("keywords")));
    mode.types = lowercasedSetOf(textsOf(value.find("types")));
    mode.lineComments = textsOf(value.find("lineComments"));
    mode.blockComments = pairsOf(value.find("blockComments"));
    mode.stringDelimiters = textsOf(value.find("strings"));
    if (mode.stringDelimiters.empty())
        mode.stringDelimiters.emplace_back("\"");
    mode.punctuation = textOr(value.find("punctuation"), defaultPunctuation);
    return mode;
}

}  // namespace tavrel
