#pragma once

#include "platform/TextRange.h"

#include <cstdint>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tl/expected.hpp>

namespace tavrel::probe {

using Json = nlohmann::json;

/// What an adaptor or a helper below throws on a request of the wrong shape; `respond` turns it
/// into the answer `{"error": message}`.
class RequestError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Lines.
//
// A lone surrogate is legal in our texts and travels as \uD83D, which the JSON library refuses.
// Inside a `Json` it is therefore spelled with the noncharacter U+FDD0 as an escape: U+FDD0 and the
// four hexadecimal digits of the code unit; U+FDD0 itself is spelled in the same way. Strings of
// a `Json` are only made and read through the functions below.

/// Reads one line. Fails on what is not JSON, on invalid UTF-8, and on nesting past
/// `maximumDepth`; the error says why.
tl::expected<Json, std::string> readLine(std::string_view line);
/// Requests that nest deeper are refused, so that the helpers may recurse over a request.
constexpr std::size_t maximumDepth = 1'000;

/// Writes a value of any depth as one line of compact JSON, without the line feed. The names of
/// an object's members are sorted.
std::string writeLine(const Json& value);

// Strings.

std::u16string textFromJson(const Json& string);
Json jsonFromText(std::u16string_view text);

/// The text as UTF-8. A lone surrogate becomes U+FFFD, as in a saved document.
std::string utf8FromJson(const Json& string);
/// Bytes that are not UTF-8 become U+FFFD.
Json jsonFromUtf8(std::string_view bytes);

std::string bytesFromHex(const Json& string);
Json hexFromBytes(std::string_view bytes);

// Ranges, `[location, length]`.

TextRange rangeFromJson(const Json& range);
Json jsonFromRange(TextRange range);

// Members. A missing member counts as null. The readers throw `RequestError` with the name of the
// member where it has another shape.

/// The member `name`, or null where it is missing or null, or `object` is no object.
const Json* member(const Json& object, std::string_view name);
/// The same, for a member that must be there.
const Json& requiredMember(const Json& object, std::string_view name);

std::u16string textMember(const Json& object, std::string_view name);
std::string utf8Member(const Json& object, std::string_view name);
std::int64_t integerMember(const Json& object, std::string_view name);
std::int64_t integerMember(const Json& object, std::string_view name, std::int64_t absent);
double numberMember(const Json& object, std::string_view name, double absent);
bool booleanMember(const Json& object, std::string_view name, bool absent);

/// The bytes of the member `name`, a text, or else of `nameHex`, the bytes themselves. Exactly one
/// of them must be there.
std::string bytesMember(const Json& object, const std::string& name);

}  // namespace tavrel::probe
