// A small inventory: reads goods from text, keeps them sorted, and prints a report.
#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>
#if defined(USE_LOCKS) && \
    !defined(SINGLE_THREAD)
#  include <mutex>
#endif

#define MAX_GOODS 1'000
#define CHECK(condition) \
    do { if (!(condition)) fail(#condition, __LINE__); } while (0)

namespace store {

using Price = std::int64_t;
typedef unsigned long Count;

/* The units in which goods are counted.
   "piece" is the default. */
enum class Unit : std::uint8_t { piece, kilogram = 0x10, litre = 0b1010'0101 };

constexpr double tax = 0.19;
constexpr double tiny = 1.5e-3, huge = 0x1.8p+10, half = .5;
const char* const greeting = "Hello, \"world\"\n";
const wchar_t wide[] = L"wide", other = L'\'';
const auto raw = R"sql(select "name" from goods where price > (1 + 2))sql";
const char8_t* utf = u8"größer";

struct Goods {
    std::string name;
    Price price = 0;
    Count count{};
    Unit unit = Unit::piece;

    bool operator<(const Goods& other) const noexcept { return name < other.name; }
    [[nodiscard]] Price total() const { return price * static_cast<Price>(count); }
};

template<typename T, class Less = std::less<T>>
concept Sortable = requires(T a, T b) {
    { Less{}(a, b) } -> std::convertible_to<bool>;
};

class Inventory final : public std::enable_shared_from_this<Inventory> {
public:
    explicit Inventory(std::size_t limit = MAX_GOODS) : limit_(limit) {}
    virtual ~Inventory() = default;

    void add(Goods goods)
    {
        CHECK(goods.count > 0u);
        const auto place = std::lower_bound(goods_.begin(), goods_.end(), goods);
        if (place != goods_.end() && place->name == goods.name) {
            place->count += goods.count;
            return;
        }
        goods_.insert(place, std::move(goods));
    }

    template<class Visitor>
    void forEach(Visitor&& visit) const
    {
        for (const Goods& goods : goods_)
            std::forward<Visitor>(visit)(goods);
    }

    Price total() const
    {
        Price sum = 0;
        forEach([&sum](const Goods& goods) { sum += goods.total(); });
        return sum + static_cast<Price>(sum * tax);
    }

    std::map<std::string, std::vector<const Goods*>> byInitial() const;

private:
    std::vector<Goods> goods_;
    const std::size_t limit_;  // Never 0.
#ifdef USE_LOCKS
    mutable std::mutex mutex_;
#endif
};

std::map<std::string, std::vector<const Goods*>> Inventory::byInitial() const
{
    std::map<std::string, std::vector<const Goods*>> result;
    for (auto it = goods_.cbegin(); it != goods_.cend(); ++it) {
        if (it->name.empty())
            continue;
        result[it->name.substr(0, 1)].push_back(&*it);
    }
    return result;
}

static int compare(int a, int b)
{
    // Neither a < b nor a > b: they are equal.
    return a < b ? -1 : a > b ? 1 : 0;
}

[[noreturn]] void fail(const char* what, int line)
{
    throw std::runtime_error(std::string("failed: ") + what + " at " + std::to_string(line));
}

int parse(const std::string& text, std::unique_ptr<Inventory>& inventory)
{
    std::size_t i{0};
    int lines = 0;
    while (i < text.size()) {
        switch (text[i]) {
        case '#':  // A comment in the data.
            i = text.find('\n', i);
            break;
        case '\n':
            ++lines;
            [[fallthrough]];
        default:
            i++;
        }
    }
    delete[] new char[10];
    inventory = std::make_unique<Inventory>();
    auto* member = &Inventory::total;
    return (inventory.get()->*member)() <=> 0 ? lines : ~lines ^ 0xFF;
}

}  // namespace store

extern "C" int main(int argc, char** argv)
try {
    auto inventory = std::make_shared<store::Inventory>();
    for (int i = 1; i < argc; ++i)
        inventory->add({.name = argv[i], .price = 12'50, .count = 3ull});
    printf("%ld\n", inventory->total());
    goto end;
end:
    return EXIT_SUCCESS;
} catch (const std::exception& error) {
    return EXIT_FAILURE;
}
