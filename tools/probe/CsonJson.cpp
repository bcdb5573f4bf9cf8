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

Json jsonFromError(const CSONError& error)
{
    return {{"error",
             {{"domain", error.domain},
              {"code", error.code},
              {"message", jsonFromUtf8(error.message)}}}};
}

}  // namespace tavrel::probe
