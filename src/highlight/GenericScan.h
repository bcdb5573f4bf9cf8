#pragma once

#include "config/LanguageMode.h"
#include "highlight/SyntaxToken.h"
#include "highlight/TokenCanvas.h"
#include "platform/RegularExpression.h"

#include <string_view>
#include <vector>

namespace tavrel {

/// Colours a language that has no scanner from its mode's data alone, pass by pass.
///
/// A value; any number of threads may scan with one at once.
class GenericScan {
public:
    /// Patterns that do not compile are left out.
    explicit GenericScan(const LanguageMode& mode);

    /// Runs the passes over `text`, each painting over the ones before. Costs O(passes * length)
    /// for texts like source code.
    void run(std::u16string_view text, TokenCanvas& canvas) const;

private:
    struct Pass {
        RegularExpression expression;
        SyntaxToken token;
    };

    void addPass(std::u16string_view pattern, SyntaxToken token);

    std::vector<Pass> passes_;  // In the order in which they run.
};

}  // namespace tavrel
