#include "highlight/AngleBrackets.h"

namespace tavrel {

std::optional<std::size_t> AngleBrackets::closing(ScannedText& text, std::size_t location)
{
    if (location >= seenEnd_)
        lookAhead(text, location);
    while (next_ < brackets_.size() && brackets_[next_].location < location)
        ++next_;
    if (next_ == brackets_.size() || brackets_[next_].location != location ||
        brackets_[next_].closing == none)
        return std::nullopt;
    return brackets_[next_].closing;
}

void AngleBrackets::lookAhead(ScannedText& text, std::size_t location)
{
    brackets_.clear();
    open_.clear();
    next_ = 0;
    const std::size_t end = std::min(text.length(), location + farthest);
    while (location < end) {
        const std::u16string_view units = text.piece(location);
        for (const char16_t unit : units.substr(0, end - location)) {
            ++location;
            if (unit > u'}')
                continue;
            if (unit == u'<') {
                open_.push_back(brackets_.size());
                brackets_.push_back({location - 1, none});
            } else if (unit == u'>') {
                brackets_[open_.back()].closing = location - 1;
                open_.pop_back();
                if (open_.empty()) {
                    seenEnd_ = location;
                    return;
                }
            } else if (unit == u';' || unit == u'{' || unit == u'}') {
                seenEnd_ = location;
                return;
            }
        }
    }
    seenEnd_ = location;
}

}  // namespace tavrel
