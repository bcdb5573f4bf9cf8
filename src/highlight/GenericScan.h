#pragma once

#include "config/LanguageMode.h"
#include "highlight/GenericPasses.h"
#include "highlight/TokenCanvas.h"

#include <string_view>
#include <vector>

namespace tavrel {

/// Colours a language that has no scanner from its mode's data alone, pass by pass.
///
/// Never changes; any number of threads may scan with one at once.
class GenericScan {
public:
    explicit GenericScan(const LanguageMode& mode);

    /// Runs the passes over `text`, each painting over the ones before. Costs O(passes * length)
    /// for texts like source code.
    void run(std::u16string_view text, TokenCanvas& canvas) const;

private:
    void add(GenericPassPtr pass);

    std::vector<GenericPassPtr> passes_;  // In the order in which they run.
};

}  // namespace tavrel
