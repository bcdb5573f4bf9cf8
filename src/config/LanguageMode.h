#pragma once

#include <set>
#include <string>
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

    /// The mode of every file without a language.
    static LanguageMode plain() { return {.id = "text", .name = "Text"}; }

    bool operator==(const LanguageMode&) const = default;
};

}  // namespace tavrel
