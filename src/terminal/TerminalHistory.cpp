#include "terminal/TerminalHistory.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <utility>

namespace tavrel {

StoredRow TerminalHistory::row(std::size_t index) const
{
    assert(index < rowCount_);
    const std::size_t at = firstRow_ + index;
    const Page& page = *pages_[at / pageRows];
    const StoredRow::Header& header = page.headers[at % pageRows];
    return StoredRow(header, page.bytes.get() + header.offset);
}

std::size_t TerminalHistory::memoryBytes() const
{
    std::size_t bytes = 0;
    const Page* previous =
        nullptr;  // The places of a page that is held several times are adjacent.
    for (const auto& page : pages_) {
        if (std::exchange(previous, page.get()) != page.get())
            bytes += sizeof(Page) + page->capacity;
    }
    return bytes + (spare_ ? sizeof(Page) + spare_->capacity : 0);
}

void TerminalHistory::append(TerminalScreenRow& row, int columns)
{
    if (row.fill() != TerminalStyle()) {
        if (row.length() == 0)
            return appendBlankRows(1, row.fill(), columns);
        row.padTo(columns, columns);
    }
    const StoredRow::Source source = StoredRow::sourceOf(row);
    Page& page = pageFor(StoredRow::mostBytes(source));
    StoredRow::Header& header = page.headers[page.rowCount++];
    header.offset = static_cast<std::uint32_t>(page.size);
    page.size += StoredRow::encode(source, header, page.bytes.get() + page.size);
    ++rowCount_;
    finishPage(page);
}

void TerminalHistory::appendBlankRows(std::size_t count, TerminalStyle style, int columns)
{
    while (count > 0) {
        Page& page = pageFor(StoredRow::blankBytes);
        StoredRow::Header header{static_cast<std::uint32_t>(page.size), 0, 0, false};
        if (style != TerminalStyle()) {
            StoredRow::encodeBlanks(columns, style, header, page.bytes.get() + page.size);
            page.size += StoredRow::blankBytes;
        }
        // The rows of one page share their bytes.
        const std::size_t added = std::min(count, pageRows - page.rowCount);
        std::fill_n(page.headers.begin() + static_cast<std::ptrdiff_t>(page.rowCount), added,
                    header);
        page.rowCount += added;
        rowCount_ += added;
        count -= added;
        finishPage(page);
        if (added == pageRows) {
            const std::size_t more = count / pageRows;
            const std::shared_ptr<Page> blanks = pages_.back();
            pages_.insert(pages_.end(), more, blanks);
            rowCount_ += more * pageRows;
            count -= more * pageRows;
        }
    }
}

void TerminalHistory::takeNewest(TerminalScreenRow& row, int columns)
{
    this->row(rowCount_ - 1).restore(row, columns);
    if (pages_.back().use_count() > 1)
        pages_.back() = copyOf(*pages_.back());
    Page& page = *pages_.back();
    --rowCount_;
    --page.rowCount;
    if (rowCount_ == 0 || page.rowCount == 0) {
        page.rowCount = 0;
        spare_ = std::move(pages_.back());
        pages_.pop_back();
    } else {
        const StoredRow::Header& taken = page.headers[page.rowCount];
        const StoredRow::Header& previous = page.headers[page.rowCount - 1];
        if (!(previous.isBlank() && previous.offset == taken.offset))
            page.size = taken.offset;
    }
    if (rowCount_ == 0)
        firstRow_ = 0;
}

void TerminalHistory::dropOldest(std::size_t count)
{
    assert(count <= rowCount_);
    rowCount_ -= count;
    firstRow_ += count;
    while (!pages_.empty() && (firstRow_ >= pageRows || rowCount_ == 0)) {
        if (pages_.front().use_count() == 1)
            spare_ = std::move(pages_.front());
        pages_.pop_front();
        firstRow_ -= std::min(firstRow_, pageRows);
    }
    if (rowCount_ == 0)
        firstRow_ = 0;
}

void TerminalHistory::cut(int columns)
{
    const auto most = static_cast<std::uint16_t>(columns);
    const Page* previous = nullptr;
    for (const auto& page : pages_) {
        if (std::exchange(previous, page.get()) == page.get())
            continue;
        for (std::size_t i = 0; i < page->rowCount; ++i)
            page->headers[i].length = std::min(page->headers[i].length, most);
    }
}

void TerminalHistory::Page::reserve(std::size_t newCapacity)
{
    auto room = std::make_unique_for_overwrite<std::uint8_t[]>(newCapacity);
    if (size > 0)
        std::memcpy(room.get(), bytes.get(), size);
    bytes = std::move(room);
    capacity = newCapacity;
}

TerminalHistory::Page& TerminalHistory::pageFor(std::size_t size)
{
    if (pages_.empty() || pages_.back()->rowCount == pageRows)
        pages_.push_back(emptyPage());
    Page& page = *pages_.back();
    const std::size_t needed = page.size + size;
    if (needed > page.capacity)
        page.reserve(std::max(needed + needed / 8, lastPageSize_ + lastPageSize_ / 16));
    return page;
}

std::shared_ptr<TerminalHistory::Page> TerminalHistory::emptyPage()
{
    std::shared_ptr<Page> page = std::move(spare_);
    if (!page)
        page = std::make_shared<Page>();
    page->rowCount = 0;
    page->size = 0;
    return page;
}

std::shared_ptr<TerminalHistory::Page> TerminalHistory::copyOf(const Page& page)
{
    auto copy = std::make_shared<Page>();
    copy->headers = page.headers;
    copy->rowCount = page.rowCount;
    copy->reserve(page.size);
    copy->size = page.size;
    std::copy_n(page.bytes.get(), page.size, copy->bytes.get());
    return copy;
}

void TerminalHistory::finishPage(Page& page)
{
    if (page.rowCount < pageRows)
        return;
    lastPageSize_ = page.size;
    // A page is used again for rows of another kind: what it does not need goes back.
    if (page.capacity - page.size > page.size / 4 + 4096)
        page.reserve(page.size);
}

}  // namespace tavrel
