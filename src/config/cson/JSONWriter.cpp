#include "config/cson/JSONWriter.h"

#include "config/cson/CSONStrings.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace tavrel {

// JSON adds mostly the quotes and commas that stand where the source had whitespace.
JSONWriter::JSONWriter(std::size_t sourceLength) : json_(sourceLength + sourceLength / 8 + 64, '\0')
{
}

std::string JSONWriter::text()
{
    json_.resize(length_);
    return std::move(json_);
}

void JSONWriter::key(const CSONToken& word)
{
    writeSeparator();
    writeQuoted(word);
    *room(1) = ':';
}

void JSONWriter::string(const CSONToken& word)
{
    writeSeparator();
    writeQuoted(word);
}

void JSONWriter::number(std::string_view written)
{
    writeSeparator();
    std::memcpy(room(written.size()), written.data(), written.size());
}

char* JSONWriter::room(std::size_t count)
{
    if (json_.size() - length_ < count)
        json_.resize(std::max(2 * json_.size(), length_ + count));
    char* place = json_.data() + length_;
    length_ += count;
    return place;
}

void JSONWriter::writeBracket(char bracket)
{
    writeSeparator();
    *room(1) = bracket;
}

// What has been written tells whether a comma is due: a value never ends in one of these bytes.
void JSONWriter::writeSeparator()
{
    const char last = length_ == 0 ? '[' : json_[length_ - 1];
    if (last != '{' && last != '[' && last != ':')
        *room(1) = ',';
}

void JSONWriter::writeQuoted(const CSONToken& word)
{
    if (!word.isPlain) {
        *room(1) = '"';
        writeUnescaped(word.text);
        *room(1) = '"';
        return;
    }
    const std::size_t size = word.text.size();
    char* place = room(size + 2);
    place[0] = '"';
    std::memcpy(place + 1, word.text.data(), size);
    place[size + 1] = '"';
}

// Takes the escapes of the source away and puts those of JSON in.
void JSONWriter::writeUnescaped(std::string_view text)
{
    unescape(
        text,
        [this](std::string_view run) {
            if (!run.empty())
                std::memcpy(room(run.size()), run.data(), run.size());
        },
        [this](char byte) { writeByte(byte); });
}

// Only five characters have an escape: the other control characters reach the JSON text raw.
void JSONWriter::writeByte(char byte)
{
    constexpr std::string_view escaped = "\"\\\n\r\t";
    constexpr std::string_view letters = "\"\\nrt";
    const std::size_t index = escaped.find(byte);
    if (index == std::string_view::npos) {
        *room(1) = byte;
        return;
    }
    char* place = room(2);
    place[0] = '\\';
    place[1] = letters[index];
}

}  // namespace tavrel
