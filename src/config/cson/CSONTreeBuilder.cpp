#include "config/cson/CSONTreeBuilder.h"

#include <iterator>

namespace tavrel {

bool CSONTreeBuilder::open()
{
    if (starts_.size() == CSONValue::maximumDepth)
        return false;
    starts_.push_back(values_.size());
    return true;
}

void CSONTreeBuilder::closeArray()
{
    const auto first = values_.end() - static_cast<std::ptrdiff_t>(close());
    std::vector<CSONValue> elements(std::make_move_iterator(first),
                                    std::make_move_iterator(values_.end()));
    values_.erase(first, values_.end());
    add(CSONValue::array(std::move(elements)));
}

void CSONTreeBuilder::closeMap()
{
    const auto count = static_cast<std::ptrdiff_t>(close());
    std::vector<CSONMember> members;
    members.reserve(static_cast<std::size_t>(count));
    const auto firstName = names_.end() - count;
    const auto firstValue = values_.end() - count;
    for (std::ptrdiff_t i = 0; i < count; ++i)
        members.push_back({std::move(firstName[i]), std::move(firstValue[i])});
    names_.erase(firstName, names_.end());
    values_.erase(firstValue, values_.end());
    add(CSONValue::map(std::move(members)));
}

std::size_t CSONTreeBuilder::close()
{
    const std::size_t count = values_.size() - starts_.back();
    starts_.pop_back();
    return count;
}

}  // namespace tavrel
