#include "config/cson/JSONTreeReader.h"
#include "config/cson/TavrelCSONBackend.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

// Any bytes as configuration text. Nothing throws, and what the two operations answer holds
// together.

namespace {

using tavrel::TavrelCSONBackend;

void require(bool condition)
{
    if (!condition)
        std::abort();
}

bool endsWithPosition(std::string_view message)
{
    const std::size_t at = message.rfind(" at ");
    return at != std::string_view::npos && message.find(':', at) != std::string_view::npos;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    const auto json = TavrelCSONBackend::normalizedJSONFromCSON(text);
    const auto tree = TavrelCSONBackend::parseCSON(text);
    if (!json) {
        require(json.error().code == 2 || endsWithPosition(json.error().message));
        require(!tree && tree.error() == json.error());
        return 0;
    }
    // JSON is CSON, so the normalised text stands for itself.
    require(TavrelCSONBackend::normalizedJSONFromCSON(*json) == *json);
    require(TavrelCSONBackend::normalizedJSONFromCSON("/* a */ #\n" + text) == *json);
    // The tree is what the JSON reader makes of the normalised text.
    require(tree == tavrel::readJSONTree(*json));
    if (tree) {
        const tavrel::CSONValue copy = *tree;
        require(copy == *tree);
    }
    return 0;
}
