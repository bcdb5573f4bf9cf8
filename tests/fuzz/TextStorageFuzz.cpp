// Any edits: a storage and a plain string go through them side by side.

#include "editor/TextDecoder.h"
#include "editor/TextEncoder.h"
#include "editor/TextStorage.h"

#include <cstdlib>

using namespace tavrel;

namespace {

void require(bool holds)
{
    if (!holds)
        std::abort();
}

class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}
    bool isEmpty() const { return size_ == 0; }
    std::size_t number()
    {
        if (size_ == 0)
            return 0;
        --size_;
        return *data_++;
    }
    std::string_view bytes(std::size_t count)
    {
        count = std::min(count, size_);
        const std::string_view taken(reinterpret_cast<const char*>(data_), count);
        data_ += count;
        size_ -= count;
        return taken;
    }

private:
    const std::uint8_t* data_;
    std::size_t size_;
};

class LengthFollower : public TextStorageObserver {
public:
    void storageDidChange(const TextStorage&, std::span<const TextChange> changes) override
    {
        std::size_t end = 0;
        for (const TextChange& change : changes) {
            require(change.oldRange.location >= end);
            end = change.oldRange.end();
            grown += change.newLength - change.oldRange.length;
        }
        require(end <= length);
        length += grown;
        grown = 0;
    }
    std::size_t length = 0;
    std::size_t grown = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Input input(data, size);
    TextStorage storage({}, input.number() % 40 + 1);
    LengthFollower follower;
    storage.addObserver(&follower);
    std::u16string plain;
    std::size_t batches = 0;
    TextSnapshot kept;
    std::u16string keptPlain;
    while (!input.isEmpty()) {
        const std::size_t step = input.number();
        const std::size_t location = input.number() * (step % 3 + 1) % (plain.size() + 1);
        const TextRange range = clampedRange({location, input.number()}, plain.size());
        switch (step % 8) {
        case 0:
        case 1: {
            const TextSnapshot text = decodedText(input.bytes(input.number() % 64), 5);
            storage.replace(range, text);
            plain.replace(range.location, range.length, text.text());
            break;
        }
        case 2: {
            // A batch of small edits from left to right.
            std::vector<TextEdit> edits;
            std::size_t next = range.location;
            for (std::size_t i = input.number() % 20; i > 0 && next <= plain.size(); --i) {
                const TextRange edited = clampedRange({next, input.number() % 4}, plain.size());
                edits.push_back({edited, decodedText(input.bytes(input.number() % 4))});
                next = edited.end() + input.number() % 8;
            }
            storage.apply(edits);
            for (auto edit = edits.rbegin(); edit != edits.rend(); ++edit)
                plain.replace(edit->range.location, edit->range.length, edit->replacement.text());
            break;
        }
        case 3: {
            const TextSnapshot slice = storage.snapshot().slice(range);
            require(slice == plain.substr(range.location, range.length));
            storage.replace({input.number() % (plain.size() + 1), 0}, slice);
            plain = storage.snapshot().text();
            break;
        }
        case 4: {
            TokenRuns runs(range.length);
            runs.paint({1, 3}, SyntaxToken::keyword);
            storage.setTokens(range.location, runs);
            require(storage.snapshot().tokens(range) == runs);
            break;
        }
        case 5:
            storage.beginEditing();
            ++batches;
            break;
        case 6:
            if (batches > 0) {
                storage.endEditing();
                --batches;
            }
            break;
        default:
            require(kept == keptPlain);
            kept = storage.snapshot();
            keptPlain = plain;
        }
        require(storage.length() == plain.size());
        if (plain.size() > 20'000) {
            storage.replace({0, plain.size()}, u"");
            plain.clear();
        }
    }
    for (; batches > 0; --batches)
        storage.endEditing();
    require(follower.length == plain.size());
    require(storage.snapshot() == plain);
    require(kept == keptPlain);
    require(storage.snapshot() == TextSnapshot(plain));
    require(storage.snapshot().lineCount() == TextSnapshot(plain).lineCount());
    storage.removeObserver(&follower);
    return 0;
}
