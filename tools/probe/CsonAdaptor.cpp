#include "config/cson/TavrelCSONBackend.h"
#include "probe/Adaptors.h"

namespace tavrel::probe {
namespace {

Json jsonFromError(const CSONError& error)
{
    return {{"error",
             {{"domain", error.domain},
              {"code", error.code},
              {"message", jsonFromUtf8(error.message)}}}};
}

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

}  // namespace

Json csonAdaptor(ProbeRequest& request)
{
    const std::string text = bytesMember(request.body(), "text");
    const auto input = [&] { return std::string_view(text); };
    if (booleanMember(request.body(), "value", false)) {
        const auto value = request.measured(input, TavrelCSONBackend::parseCSON);
        return value ? Json{{"value", jsonFromValue(*value)}} : jsonFromError(value.error());
    }
    const auto json = request.measured(input, TavrelCSONBackend::normalizedJSONFromCSON);
    return json ? Json{{"json", jsonFromUtf8(*json)}} : jsonFromError(json.error());
}

}  // namespace tavrel::probe
