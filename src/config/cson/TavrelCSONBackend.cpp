#include "config/cson/TavrelCSONBackend.h"

#include "config/cson/CSONParser.h"
#include "config/cson/CSONStrings.h"
#include "config/cson/JSONTreeReader.h"
#include "config/cson/JSONWriter.h"

#include <exception>

namespace tavrel {
namespace {

constexpr const char* domain = "TavrelCSONBackend";
constexpr int parseFailed = 1;
constexpr int encodingFailed = 2;

}  // namespace

tl::expected<std::string, CSONError>
TavrelCSONBackend::normalizedJSONFromCSON(std::string_view text)
try {
    text = text.substr(0, text.find('\0'));
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
    return normalizedJSONFromCSON(text).and_then(readJSONTree);
}

}  // namespace tavrel
