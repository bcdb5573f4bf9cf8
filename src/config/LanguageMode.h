#pragma once

#include "config/cson/CSONValue.h"

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tavrel {

/// What the editor knows of one language: a plain value, read from a mode file. Texts are UTF-8.
struct LanguageMode {
    std::string id;
    std::string name;
    std::set<std::string> extensions;  // In small letters, without the dot.
    std::set<std::string> keywords;    // As written: looked up with their case.
    std::set<std::string> types;       // In small letters.
    std::vector<std::string> lineComments;
    std::vector<std::pair<std::string, std::string>> blockComments;  // Opening and closing mark.
    std::vector<std::string> stringDelimiters;
    std::string punctuation;

    static constexpr std::string_view defaultPunctuation = "{}[]();:,.+-*/%=<>!&|^~?";

    /// The mode of every file without a language.
    static LanguageMode plain() { return {.id = "text", .name = "Text"}; }

    /// The mode that a parsed mode file holds; nothing where it is no map or has no text as its
    /// `id`. Every other field of a wrong shape counts as missing.
    static std::optional<LanguageMode> fromValue(const CSONValue& value);

    bool operator==(const LanguageMode&) const = default;
};

}  // namespace tavrel
