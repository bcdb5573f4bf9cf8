#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace tavrel {

struct CSONMember;
class CSONNode;

/// A value read from configuration text: a map, an array, a string, a number, a boolean or null.
///
/// A value that never changes. Copying costs a reference count whatever the size, and copies may be
/// read and dropped on any thread. Strings are UTF-8. The readers ask for a shape and answer
/// nothing (an empty span, null) for a value of another shape; numbers and booleans count as one
/// shape, so that a boolean read as a number is 1 or 0. Copying, comparing and dropping need no
/// stack however deep the value is.
class CSONValue {
public:
    /// The deepest nesting of maps and arrays that the reader of text lets through, so that whoever
    /// walks a value read from text may recurse.
    static constexpr std::size_t maximumDepth = 10'000;

    CSONValue() = default;  // Null.
    explicit CSONValue(bool value) : value_(value) {}
    explicit CSONValue(std::int64_t value) : value_(value) {}
    explicit CSONValue(std::uint64_t value);
    explicit CSONValue(double value) : value_(value) {}
    explicit CSONValue(std::string value) : value_(std::move(value)) {}

    CSONValue(const CSONValue& other) = default;
    CSONValue(CSONValue&& other) noexcept = default;  // Leaves `other` fit for assignment only.
    /// A value may be assigned one of its own parts: the part is taken before the whole is dropped.
    CSONValue& operator=(const CSONValue& other) { return *this = CSONValue(other); }
    CSONValue& operator=(CSONValue&& other) noexcept = default;

    static CSONValue array(std::vector<CSONValue> elements);
    /// Of two members of one name the last one counts. Costs O(n log n).
    static CSONValue map(std::vector<CSONMember> members);

    bool isNull() const { return std::holds_alternative<std::monostate>(value_); }
    bool isBoolean() const { return std::holds_alternative<bool>(value_); }
    bool isString() const { return std::holds_alternative<std::string>(value_); }
    bool isArray() const;
    bool isMap() const;
    /// A number that was written without a fraction and an exponent, and fits in 64 bits.
    bool isInteger() const;
    bool isFloating() const { return std::holds_alternative<double>(value_); }
    bool isNumber() const { return isInteger() || isFloating(); }

    /// Numbers are true unless they are 0.
    std::optional<bool> boolean() const;
    /// Cut towards 0 and clamped to 64 bits.
    std::optional<std::int64_t> integer() const;
    /// A number for which `isInteger` holds and that is not below 0.
    std::optional<std::uint64_t> unsignedInteger() const;
    std::optional<double> number() const;
    /// Valid as long as a value that shares this one's contents stands at its place.
    std::optional<std::string_view> string() const;

    /// The elements of an array in order. Valid as long as any copy of this value is.
    std::span<const CSONValue> elements() const;
    /// The members of a map, sorted by the bytes of their names. Valid as the elements are.
    std::span<const CSONMember> members() const;
    /// The member `name` of a map, null where there is none. O(log n). Valid as the elements are.
    const CSONValue* find(std::string_view name) const;

    /// Equal shapes with equal contents; an integer equals the floating number of the same value,
    /// a boolean equals only a boolean.
    bool operator==(const CSONValue& other) const;

private:
    // Shares one node of children with every copy of the value.
    class Children {
    public:
        explicit Children(CSONNode* node) : node_(node) {}
        Children(const Children& other);
        Children(Children&& other) noexcept : node_(other.node_) { other.node_ = nullptr; }
        Children& operator=(Children other) noexcept;
        ~Children();
        const CSONNode* node() const { return node_; }
        // Gives the reference up to the caller.
        CSONNode* release();

    private:
        CSONNode* node_;  // Null only when moved from.
    };

    const CSONNode* node() const;
    static void drop(CSONNode* node);
    friend class CSONNode;

    // Numbers that an `std::int64_t` can hold are never stored as `std::uint64_t`.
    std::variant<std::monostate, bool, std::int64_t, std::uint64_t, double, std::string, Children>
        value_;
};

/// A member of a map.
struct CSONMember {
    std::string name;
    CSONValue value;
};

}  // namespace tavrel
