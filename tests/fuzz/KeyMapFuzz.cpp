#include "editor/dispatch/CommandDispatcher.h"
#include "editor/dispatch/KeyTranslator.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The input is a key map, a line feed, and keys: what each byte presses comes from the map's own
// chords, so that sequences are walked, or is the byte itself as a modifier state and a place.

namespace {

using namespace tavrel;

void check(bool holds, const char* what)
{
    if (holds)
        return;
    std::cerr << "broken: " << what << '\n';
    std::abort();
}

class CountingTarget final : public CommandTarget {
public:
    void performCommand(const EditorCommand& command) override
    {
        ++commands;
        command.integer("offset", 0);
        command.truth("down", true);
    }
    void beep() override { ++beeps; }

    std::size_t commands = 0;
    std::size_t beeps = 0;
};

std::vector<std::string> checkedSplit(std::string_view text)
{
    const std::string canonical = KeyTranslator::canonicalChord(text);
    check(KeyTranslator::canonicalChord(canonical) == canonical, "a canonical chord stays");
    std::vector<std::string> chords = KeyTranslator::sequenceSplit(text);
    const std::string joined = KeyTranslator::joinedSequence(chords);
    check(KeyTranslator::sequenceSplit(joined) == chords, "a joined sequence splits alike");
    for (const std::string& chord : chords)
        check(!chord.empty(), "a chord is not empty");
    if (const auto shortcut = KeyTranslator::menuShortcut(text))
        check(shortcut->key.size() == 1, "a menu key is one unit");
    return chords;
}

KeyEvent pressOfChord(std::string_view chord)
{
    // ASCII only: the event takes the units as they are.
    KeyEvent event;
    event.charactersIgnoringModifiers.assign(chord.begin(), chord.end());
    return event;
}

KeyEvent pressOfByte(std::uint8_t byte)
{
    constexpr int modifierShift = 17;
    KeyEvent event;
    event.keyCode = byte & 0x7F;
    event.modifierFlags = static_cast<std::uint64_t>(byte >> 4) << modifierShift;
    event.charactersIgnoringModifiers = {static_cast<char16_t>(byte)};
    return event;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::size_t end = std::min(input.find('\n'), size);
    const std::string_view keys = input.substr(std::min(end + 1, size));
    checkedSplit(input);

    const auto entries = keyMapFromCSON(input.substr(0, end));
    if (!entries)
        return 0;
    keyMapFromCSON(input.substr(0, end), "keys");
    std::vector<std::string> chords;
    for (const KeyMapEntry& entry : *entries)
        for (std::string& chord : checkedSplit(entry.sequence))
            chords.push_back(std::move(chord));

    CommandDispatcher dispatcher;
    dispatcher.load(*entries);
    CountingTarget target;
    for (const char key : keys) {
        const auto byte = static_cast<std::uint8_t>(key);
        const bool isChord = byte % 4 != 0 && !chords.empty();
        const KeyEvent event =
            isChord ? pressOfChord(chords[byte % chords.size()]) : pressOfByte(byte);
        const std::string before = dispatcher.pendingSequence();
        const CountingTarget old = target;
        const bool isConsumed = dispatcher.handleKeyEvent(event, target);
        const bool didRun = target.commands != old.commands;
        const bool didBeep = target.beeps != old.beeps;
        check(isConsumed || (!didRun && !didBeep), "a key that is not consumed does nothing");
        check(isConsumed || dispatcher.pendingSequence() == before, "nor changes the sequence");
        check(!didBeep || (!before.empty() && !didRun), "only a broken sequence beeps");
        check(!didRun || dispatcher.pendingSequence().empty(), "a binding ends the sequence");
    }
    dispatcher.load({});
    check(dispatcher.pendingSequence().empty(), "loading forgets the sequence");
    return 0;
}
