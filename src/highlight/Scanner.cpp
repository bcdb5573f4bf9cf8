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
    Row{"cson", &dataScanner},
    Row{"json", &dataScanner},
    Row{"javascript", &javascriptScanner},
    Row{"python", &pythonScanner},
    Row{"swift", &swiftScanner},
    Row{"rust", &rustScanner},
    Row{"perl", &perlScanner},
    Row{"html", &htmlScanner},
    Row{"java", &javaScanner},
    Row{"go", &goScanner},
    Row{"typescript", &javascriptScanner},
    Row{"shell", &shellScanner},
    Row{"css", &cssScanner},
    Row{"markdown", &markdownScanner},
    Row{"csharp", &csharpScanner},
    Row{"kotlin", &kotlinScanner},
    Row{"sql", &sqlScanner},
    Row{"yaml", &yamlScanner},
    Row{"toml", &tomlScanner},
};

}  // namespace

const Scanner* scannerFor(std::string_view languageId)
{
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [&](const Row& known) { return known.languageId == languageId; });
    return row == rows.end() ? nullptr : row->scanner;
}

}  // namespace tavrel
