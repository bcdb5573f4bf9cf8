#include "probe/CsonJson.h"

#include <vector>

namespace tavrel::probe {
namespace {

Json jsonFromLeaf(const CSONValue& value)
{
    if (const auto string = value.string())
        return jsonFromUtf8(*string);
    if (value.isBoolean())
        return *value.boolean();
    if (const auto number = value.unsignedInteger())
        return *number;
    if (value.isInteger())
        return *value.integer();
    if (value.isNumber())
        return *value.number();
    return nullptr;
}

}  // namespace

// Goes down with a list of what is left to do, since a tree may be too deep for the stack.
Json jsonFromValue(const CSONValue& root)
{
    struct Todo {
        const CSONValue* from;
        Json* to;
    };
    Json result;
    std::vector<Todo> todo{{&root, &result}};
    while (!todo.empty()) {
        const auto [from, to] = todo.back();
        todo.pop_back();
        if (from->isMap()) {
            *to = Json::object();
            for (const CSONMember& child : from->members()) {
                Json& slot = (*to)[jsonFromUtf8(child.name).get_ref<const std::string&>()];
                todo.push_back({&child.value, &slot});
            }
        } else if (from->isArray()) {
            *to = Json::array_t(from->elements().size());
            for (std::size_t i = 0; i < from->elements().size(); ++i)
                todo.push_back({&from->elements()[i], &(*to)[i]});
        } else {
            *to = jsonFromLeaf(*from);
        }
    }
    return result;
}

CSONValue valueFromJson(const Json& value)
{
    if (value.is_object()) {
        std::vector<CSONMember> members;
        for (const auto& [name, child] : value.items())
            members.push_back({utf8FromJson(name), valueFromJson(child)});
        return CSONValue::map(std::move(members));
    }
    if (value.is_array()) {
        std::vector<CSONValue> elements;
        for (const Json& child : value)
            elements.push_back(valueFromJson(child));
        return CSONValue::array(std::move(elements));
    }
    if (value.is_string())
        return CSONValue(utf8FromJson(value));
    if (value.is_boolean())
        return CSONValue(value.get<bool>());
    if (value.is_number_unsigned())
        return CSONValue(value.get<std::uint64_t>());
    if (value.is_number_integer())
        return CSONValue(value.get<std::int64_t>());
    return value.is_number() ? CSONValue(value.get<double>()) : CSONValue();
}

Json jsonFromError(const CSONError& error)
{
    return {{"error",
             {{"domain", error.domain},
              {"code", error.code},
              {"message", jsonFromUtf8(error.message)}}}};
}

}  // namespace tavrel::probe
