#include "config/cson/CSONValue.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <limits>
#include <utility>

namespace tavrel {

// The children of one array or map, with the number of values that share them.
class CSONNode {
public:
    explicit CSONNode(std::vector<CSONValue> children) : elements(std::move(children)) {}
    explicit CSONNode(std::vector<CSONMember> children) : isMap(true), members(std::move(children))
    {
    }

    // Moves the nodes of the children to `nodes`, so that dropping this one goes no deeper.
    void detachChildren(std::vector<CSONNode*>& nodes)
    {
        for (CSONValue& element : elements)
            detach(element, nodes);
        for (CSONMember& member : members)
            detach(member.value, nodes);
    }

    std::atomic<std::size_t> owners{1};
    const bool isMap = false;
    std::vector<CSONValue> elements;
    std::vector<CSONMember> members;  // Sorted by name, no name twice.

private:
    static void detach(CSONValue& value, std::vector<CSONNode*>& nodes)
    {
        if (auto* children = std::get_if<CSONValue::Children>(&value.value_))
            nodes.push_back(children->release());
    }
};

namespace {

bool isBefore(const CSONMember& a, const CSONMember& b)
{
    return a.name < b.name;
}

// Sorts by name, and keeps the last of each row of equal names.
void sortByName(std::vector<CSONMember>& members)
{
    // Nearly all maps have few members, which go into their places without a second buffer.
    constexpr std::size_t few = 24;
    if (members.size() > few) {
        std::stable_sort(members.begin(), members.end(), isBefore);
    } else {
        for (auto next = members.begin(); next != members.end(); ++next) {
            const auto place = std::upper_bound(members.begin(), next, *next, isBefore);
            if (place == next)
                continue;
            CSONMember moved = std::move(*next);
            std::move_backward(place, next, next + 1);
            *place = std::move(moved);
        }
    }
    const auto sameName = [](const CSONMember& a, const CSONMember& b) { return a.name == b.name; };
    if (std::adjacent_find(members.begin(), members.end(), sameName) == members.end())
        return;
    const auto first = std::unique(members.rbegin(), members.rend(), sameName).base();
    members.erase(members.begin(), first);
}

struct Pair {
    const CSONValue* left;
    const CSONValue* right;
};

bool equalNumbers(const CSONValue& left, const CSONValue& right)
{
    // Integers past 2^53 would lose their last digits as floating numbers.
    if (left.isInteger() && right.isInteger())
        return left.integer() == right.integer() &&
               left.unsignedInteger() == right.unsignedInteger();
    return left.number() == right.number();
}

// Compares two values, and leaves the pairs of their children to be compared in `pairs`.
bool equalWithoutChildren(const CSONValue& left, const CSONValue& right, std::vector<Pair>& pairs)
{
    if (left.isNumber() && right.isNumber())
        return equalNumbers(left, right);
    if (left.isArray() && right.isArray()) {
        const auto a = left.elements();
        const auto b = right.elements();
        if (a.size() != b.size())
            return false;
        for (std::size_t i = 0; i < a.size() && a.data() != b.data(); ++i)
            pairs.push_back({&a[i], &b[i]});
        return true;
    }
    if (left.isMap() && right.isMap()) {
        const auto a = left.members();
        const auto b = right.members();
        if (a.size() != b.size())
            return false;
        for (std::size_t i = 0; i < a.size() && a.data() != b.data(); ++i) {
            if (a[i].name != b[i].name)
                return false;
            pairs.push_back({&a[i].value, &b[i].value});
        }
        return true;
    }
    if (left.isBoolean() && right.isBoolean())
        return left.boolean() == right.boolean();
    if (left.isString() && right.isString())
        return left.string() == right.string();
    return left.isNull() && right.isNull();
}

}  // namespace

CSONValue::Children::Children(const Children& other) : node_(other.node_)
{
    if (node_)
        node_->owners.fetch_add(1, std::memory_order_relaxed);
}

CSONValue::Children& CSONValue::Children::operator=(Children other) noexcept
{
    std::swap(node_, other.node_);
    return *this;
}

CSONValue::Children::~Children()
{
    if (node_)
        drop(node_);
}

CSONNode* CSONValue::Children::release()
{
    return std::exchange(node_, nullptr);
}

CSONValue::CSONValue(std::uint64_t value)
{
    if (value <= static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
        value_ = static_cast<std::int64_t>(value);
    else
        value_ = value;
}

CSONValue CSONValue::array(std::vector<CSONValue> elements)
{
    CSONValue value;
    value.value_ = Children(new CSONNode(std::move(elements)));
    return value;
}

CSONValue CSONValue::map(std::vector<CSONMember> members)
{
    sortByName(members);
    CSONValue value;
    value.value_ = Children(new CSONNode(std::move(members)));
    return value;
}

bool CSONValue::isArray() const
{
    return node() && !node()->isMap;
}

bool CSONValue::isMap() const
{
    return node() && node()->isMap;
}

bool CSONValue::isInteger() const
{
    return std::holds_alternative<std::int64_t>(value_) ||
           std::holds_alternative<std::uint64_t>(value_);
}

std::optional<bool> CSONValue::boolean() const
{
    if (const auto* value = std::get_if<bool>(&value_))
        return *value;
    if (const auto value = number())
        return *value != 0;
    return std::nullopt;
}

std::optional<std::int64_t> CSONValue::integer() const
{
    constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
    if (const auto* value = std::get_if<bool>(&value_))
        return *value ? 1 : 0;
    if (const auto* value = std::get_if<std::int64_t>(&value_))
        return *value;
    if (std::holds_alternative<std::uint64_t>(value_))
        return largest;
    const auto* value = std::get_if<double>(&value_);
    if (!value)
        return std::nullopt;
    if (std::isnan(*value))
        return 0;
    constexpr double beyond = 9223372036854775808.0;  // 2^63, the first value that does not fit.
    if (*value >= beyond)
        return largest;
    if (*value < -beyond)
        return smallest;
    return static_cast<std::int64_t>(*value);
}

std::optional<std::uint64_t> CSONValue::unsignedInteger() const
{
    if (const auto* value = std::get_if<std::uint64_t>(&value_))
        return *value;
    const auto* value = std::get_if<std::int64_t>(&value_);
    if (value && *value >= 0)
        return static_cast<std::uint64_t>(*value);
    return std::nullopt;
}

std::optional<double> CSONValue::number() const
{
    if (const auto* value = std::get_if<bool>(&value_))
        return *value ? 1 : 0;
    if (const auto* value = std::get_if<std::int64_t>(&value_))
        return static_cast<double>(*value);
    if (const auto* value = std::get_if<std::uint64_t>(&value_))
        return static_cast<double>(*value);
    if (const auto* value = std::get_if<double>(&value_))
        return *value;
    return std::nullopt;
}

std::optional<std::string_view> CSONValue::string() const
{
    if (const auto* value = std::get_if<std::string>(&value_))
        return *value;
    return std::nullopt;
}

std::span<const CSONValue> CSONValue::elements() const
{
    return node() ? std::span<const CSONValue>(node()->elements) : std::span<const CSONValue>();
}

std::span<const CSONMember> CSONValue::members() const
{
    return node() ? std::span<const CSONMember>(node()->members) : std::span<const CSONMember>();
}

const CSONValue* CSONValue::find(std::string_view name) const
{
    const auto all = members();
    const auto found =
        std::lower_bound(all.begin(), all.end(), name, [](const CSONMember& member, auto wanted) {
            return std::string_view(member.name) < wanted;
        });
    return found != all.end() && found->name == name ? &found->value : nullptr;
}

bool CSONValue::operator==(const CSONValue& other) const
{
    std::vector<Pair> pairs{{this, &other}};
    while (!pairs.empty()) {
        const Pair pair = pairs.back();
        pairs.pop_back();
        if (!equalWithoutChildren(*pair.left, *pair.right, pairs))
            return false;
    }
    return true;
}

const CSONNode* CSONValue::node() const
{
    const auto* children = std::get_if<Children>(&value_);
    return children ? children->node() : nullptr;
}

// Gives one reference up, and drops what nobody shares any more level by level, not by recursion.
void CSONValue::drop(CSONNode* node)
{
    if (node->owners.fetch_sub(1, std::memory_order_acq_rel) != 1)
        return;
    std::vector<CSONNode*> unshared{node};
    std::vector<CSONNode*> children;
    while (!unshared.empty()) {
        CSONNode* last = unshared.back();
        unshared.pop_back();
        children.clear();
        last->detachChildren(children);
        delete last;
        for (CSONNode* child : children) {
            if (child && child->owners.fetch_sub(1, std::memory_order_acq_rel) == 1)
                unshared.push_back(child);
        }
    }
}

}  // namespace tavrel
