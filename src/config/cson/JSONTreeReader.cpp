#include "config/cson/JSONTreeReader.h"

#include <nlohmann/json.hpp>

#include <exception>
#include <iterator>
#include <utility>

namespace tavrel {
namespace {

constexpr const char* domain = "TavrelJSONReader";
constexpr int tooDeep = 1;

// Builds the tree from the events of the JSON library. Finished values wait on one stack until the
// container around them ends, so nothing recurses and every container is allocated once.
class TreeBuilder {
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
    bool key(string_t& name)
    {
        names_.push_back(std::move(name));
        return true;
    }
    bool end_object()
    {
        const std::size_t count = close();
        std::vector<CSONMember> members;
        members.reserve(count);
        auto value = values_.end() - static_cast<std::ptrdiff_t>(count);
        for (auto name = names_.end() - static_cast<std::ptrdiff_t>(count); name != names_.end();
             ++name, ++value)
            members.push_back({std::move(*name), std::move(*value)});
        names_.resize(names_.size() - count);
        values_.resize(values_.size() - count);
        return add(CSONValue::map(std::move(members)));
    }
    bool start_array(std::size_t) { return open(); }
    bool end_array()
    {
        const auto first = values_.end() - static_cast<std::ptrdiff_t>(close());
        std::vector<CSONValue> elements(std::make_move_iterator(first),
                                        std::make_move_iterator(values_.end()));
        values_.erase(first, values_.end());
        return add(CSONValue::array(std::move(elements)));
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
        return std::move(values_.back());
    }

private:
    bool add(CSONValue value)
    {
        values_.push_back(std::move(value));
        return true;
    }
    bool open()
    {
        if (starts_.size() == CSONValue::maximumDepth) {
            error_ = CSONError{domain, tooDeep,
                               "Nesting deeper than " + std::to_string(CSONValue::maximumDepth) +
                                   " levels"};
            return false;
        }
        starts_.push_back(values_.size());
        return true;
    }
    // The number of values in the innermost container, which ends here.
    std::size_t close()
    {
        const std::size_t count = values_.size() - starts_.back();
        starts_.pop_back();
        return count;
    }

    std::vector<CSONValue> values_;    // Finished, of all containers that are open.
    std::vector<std::string> names_;   // The names of those that are members.
    std::vector<std::size_t> starts_;  // Where the values of each open container begin.
    CSONError error_;                  // Without a domain as long as all is well.
};

}  // namespace

tl::expected<CSONValue, CSONError> readJSONTree(std::string_view json)
try {
    TreeBuilder builder;
    nlohmann::json::sax_parse(json, &builder);
    return builder.result();
} catch (const std::exception& error) {
    return tl::unexpected(CSONError{domain, 0, error.what()});
}

}  // namespace tavrel
