#include "config/cson/JSONTreeReader.h"

#include "config/cson/CSONTreeBuilder.h"

#include <exception>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

namespace tavrel {
namespace {

constexpr const char* domain = "TavrelJSONReader";
constexpr int tooDeep = 1;

// Receives the events of the JSON library. Each answers whether the library shall go on.
class JSONEvents {
public:
    using number_integer_t = nlohmann::json::number_integer_t;
    using number_unsigned_t = nlohmann::json::number_unsigned_t;
    using number_float_t = nlohmann::json::number_float_t;
    using string_t = nlohmann::json::string_t;
    using binary_t = nlohmann::json::binary_t;

    bool null() { return add(CSONValue()); }
    bool boolean(bool value) { return add(CSONValue(value)); }
    bool number_integer(number_integer_t value) { return add(CSONValue(value)); }
    bool number_unsigned(number_unsigned_t value) { return add(CSONValue(value)); }
    bool number_float(number_float_t value, const string_t&) { return add(CSONValue(value)); }
    bool string(string_t& value) { return add(CSONValue(std::move(value))); }
    bool binary(binary_t&) { return false; }  // JSON text has none.
    bool start_object(std::size_t) { return open(); }
    bool start_array(std::size_t) { return open(); }
    bool key(string_t& name)
    {
        builder_.addName(std::move(name));
        return true;
    }
    bool end_object()
    {
        builder_.closeMap();
        return true;
    }
    bool end_array()
    {
        builder_.closeArray();
        return true;
    }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception& error)
    {
        error_ = CSONError{domain, error.id, error.what()};
        return false;
    }

    tl::expected<CSONValue, CSONError> result()
    {
        if (!error_.domain.empty())
            return tl::unexpected(error_);
        return builder_.takeTree();
    }

private:
    bool add(CSONValue value)
    {
        builder_.add(std::move(value));
        return true;
    }
    bool open()
    {
        if (builder_.open())
            return true;
        error_ =
            CSONError{domain, tooDeep,
                      "Nesting deeper than " + std::to_string(CSONValue::maximumDepth) + " levels"};
        return false;
    }

    CSONTreeBuilder builder_;
    CSONError error_;  // Without a domain as long as all is well.
};

}  // namespace

tl::expected<CSONValue, CSONError> readJSONTree(std::string_view json)
try {
    JSONEvents events;
    nlohmann::json::sax_parse(json, &events);
    return events.result();
} catch (const std::exception& error) {
    return tl::unexpected(CSONError{domain, 0, error.what()});
}

}  // namespace tavrel
