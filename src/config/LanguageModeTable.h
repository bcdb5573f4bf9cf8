#pragma once

#include <array>
#include <string>
#include <string_view>

namespace tavrel {

/// A language that the program knows.
struct LanguageModeRow {
    std::string_view id;
    std::string_view displayName;
};

/// All of them, in the order of loading: the earlier one wins an extension that two claim.
inline constexpr std::array languageModeTable{
    LanguageModeRow{"cpp", "C++"},
    LanguageModeRow{"python", "Python"},
    LanguageModeRow{"swift", "Swift"},
    LanguageModeRow{"javascript", "JavaScript"},
    LanguageModeRow{"json", "JSON"},
    LanguageModeRow{"cson", "CSON"},
    LanguageModeRow{"rust", "Rust"},
    LanguageModeRow{"perl", "Perl"},
    LanguageModeRow{"html", "HTML"},
    LanguageModeRow{"java", "Java"},
    LanguageModeRow{"go", "Go"},
    LanguageModeRow{"typescript", "TypeScript"},
    LanguageModeRow{"shell", "Shell"},
    LanguageModeRow{"css", "CSS"},
    LanguageModeRow{"markdown", "Markdown"},
    LanguageModeRow{"csharp", "C#"},
    LanguageModeRow{"kotlin", "Kotlin"},
    LanguageModeRow{"sql", "SQL"},
    LanguageModeRow{"yaml", "YAML"},
    LanguageModeRow{"toml", "TOML"},
};

/// The display name of a mode; an id that is not in the table is its own name.
inline std::string displayName(std::string_view modeId)
{
    for (const LanguageModeRow& row : languageModeTable)
        if (row.id == modeId)
            return std::string(row.displayName);
    return std::string(modeId);
}

}  // namespace tavrel
