#include "config/cson/TavrelCSONBackend.h"

#include "config/cson/CSONParser.h"
#include "config/cson/CSONStrings.h"
#include "config/cson/CSONTreeWriter.h"
#include "config/cson/JSONTreeReader.h"
#include "config/cson/JSONWriter.h"

#include <exception>
#include <optional>
#include <utility>

namespace tavrel {
namespace {

constexpr const char* domain = "TavrelCSONBackend";
constexpr int parseFailed = 1;
constexpr int encodingFailed = 2;

std::string_view upToNUL(std::string_view text)
{
    return text.substr(0, text.find('\0'));
}

// The tree without the JSON text between: nothing where the text is malformed or where the JSON
// reader might refuse what the normaliser makes of it.
std::optional<CSONValue> undoubtedTree(std::string_view text)
try {
    CSONTreeWriter writer;
    CSONParser(upToNUL(text), writer).parse();
    if (writer.isInDoubt())
        return std::nullopt;
    return writer.takeTree();
} catch (const std::exception&) {
    return std::nullopt;
}

}  // namespace

tl::expected<std::string, CSONError>
TavrelCSONBackend::normalizedJSONFromCSON(std::string_view text)
try {
    text = upToNUL(text);
    JSONWriter writer(text.size());
    CSONParser(text, writer).parse();
    std::string json = writer.text();
    if (!isUTF8(json))
        return tl::unexpected(
            CSONError{domain, encodingFailed, "Unable to encode normalized JSON"});
    return json;
} catch (const std::exception& error) {
    return tl::unexpected(CSONError{domain, parseFailed, error.what()});
} catch (...) {
    return tl::unexpected(CSONError{domain, parseFailed, "CSON parse failed"});
}

tl::expected<CSONValue, CSONError> TavrelCSONBackend::parseCSON(std::string_view text)
{
    if (std::optional<CSONValue> tree = undoubtedTree(text))
        return std::move(*tree);
    return normalizedJSONFromCSON(text).and_then(readJSONTree);
}

}  // namespace tavrel
