#include "highlight/Scanner.h"

#include <algorithm>
#include <array>

namespace tavrel {
namespace {

struct Row {
    std::string_view languageId;
    const Scanner* scanner;
};

constexpr std::array rows{
    Row{"cpp", &cppScanner},
};

}  // namespace

const Scanner* scannerFor(std::string_view languageId)
{
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [&](const Row& known) { return known.languageId == languageId; });
    return row == rows.end() ? nullptr : row->scanner;
}

}  // namespace tavrel
