#include "editor/dispatch/CommandDispatcher.h"

#include "config/cson/TavrelCSONBackend.h"
#include "editor/dispatch/CommandTable.h"
#include "editor/dispatch/DefaultKeyMap.h"
#include "editor/dispatch/KeyTranslator.h"

#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace tavrel {
namespace {

class RecordingTarget final : public CommandTarget {
public:
    void performCommand(const EditorCommand& command) override
    {
        ran.push_back(command.name);
        if (onCommand)
            onCommand(command);
    }
    void beep() override { ++beeps; }

    std::vector<std::string> ran;
    int beeps = 0;
    std::function<void(const EditorCommand&)> onCommand;
};

KeyEvent press(std::u16string_view text)
{
    KeyEvent event;
    event.charactersIgnoringModifiers = text;
    return event;
}

std::vector<KeyMapEntry> entries(std::string_view cson)
{
    return keyMapFromCSON(cson).value();
}

EditorCommand command(std::string_view cson)
{
    return CommandDispatcher::commandsFromValue(TavrelCSONBackend::parseCSON(cson).value()).at(0);
}

TEST(CommandDispatcher, KnowsNoKeyBeforeItIsLoaded)
{
    CommandDispatcher dispatcher;
    RecordingTarget target;
    EXPECT_FALSE(dispatcher.handleKeyEvent(press(u"a"), target));
    EXPECT_EQ(dispatcher.pendingSequence(), "");
}

TEST(CommandDispatcher, LoadForgetsTheOldMapAndTheSequenceUnderWay)
{
    CommandDispatcher dispatcher;
    RecordingTarget target;
    dispatcher.load(entries(R"({"a,b": one c: two})"));
    EXPECT_TRUE(dispatcher.handleKeyEvent(press(u"a"), target));
    EXPECT_EQ(dispatcher.pendingSequence(), "a");

    dispatcher.load(entries(R"({"b": three})"));
    EXPECT_EQ(dispatcher.pendingSequence(), "");
    EXPECT_FALSE(dispatcher.handleKeyEvent(press(u"a"), target));
    EXPECT_FALSE(dispatcher.handleKeyEvent(press(u"c"), target));
    EXPECT_TRUE(dispatcher.handleKeyEvent(press(u"b"), target));
    EXPECT_EQ(target.ran, std::vector<std::string>{"three"});
}

TEST(CommandDispatcher, LaterEntriesReplaceTheDefaults)
{
    std::vector<KeyMapEntry> all = defaultKeyMapEntries();
    for (const KeyMapEntry& entry : entries(R"({"Cmd+S": mine "CMD+C": first "cmd+c": second})"))
        all.push_back(entry);
    CommandDispatcher dispatcher;
    dispatcher.load(all);
    RecordingTarget target;
    KeyEvent copy = press(u"c");
    copy.modifierFlags = commandModifier;
    EXPECT_TRUE(dispatcher.handleKeyEvent(copy, target));
    KeyEvent undo = press(u"z");
    undo.modifierFlags = commandModifier;
    EXPECT_TRUE(dispatcher.handleKeyEvent(undo, target));
    EXPECT_EQ(target.ran, (std::vector<std::string>{"second", "undo"}));
}

TEST(CommandDispatcher, ACommandMayLoadTheMapAnew)
{
    CommandDispatcher dispatcher;
    dispatcher.load(entries("{a: [reload after]}"));
    RecordingTarget target;
    target.onCommand = [&](const EditorCommand& command) {
        if (command.name == "reload")
            dispatcher.load(entries("{a: new}"));
    };
    EXPECT_TRUE(dispatcher.handleKeyEvent(press(u"a"), target));
    EXPECT_TRUE(dispatcher.handleKeyEvent(press(u"a"), target));
    EXPECT_EQ(target.ran, (std::vector<std::string>{"reload", "after", "new"}));
}

TEST(CommandDispatcher, ACommandMayDestroyTheDispatcher)
{
    std::optional<CommandDispatcher> dispatcher(std::in_place);
    dispatcher->load(entries(R"({"a,b": [closeWindow after]})"));
    RecordingTarget target;
    target.onCommand = [&](const EditorCommand&) { dispatcher.reset(); };
    EXPECT_TRUE(dispatcher->handleKeyEvent(press(u"a"), target));
    EXPECT_TRUE(dispatcher->handleKeyEvent(press(u"b"), target));
    EXPECT_EQ(target.ran, (std::vector<std::string>{"closeWindow", "after"}));
}

TEST(CommandDispatcher, ACommandMayPressAKey)
{
    CommandDispatcher dispatcher;
    dispatcher.load(entries(R"({a: [press after] b: pressed})"));
    RecordingTarget target;
    target.onCommand = [&](const EditorCommand& command) {
        if (command.name == "press")
            dispatcher.handleKeyEvent(press(u"b"), target);
    };
    EXPECT_TRUE(dispatcher.handleKeyEvent(press(u"a"), target));
    EXPECT_EQ(target.ran, (std::vector<std::string>{"press", "pressed", "after"}));
}

TEST(CommandDispatcher, ASequenceOfManyChordsTakesMemoryByItsLength)
{
    // Held one by one, the beginnings of this sequence would take 40 GB.
    constexpr int chords = 200'000;
    std::string sequence;
    for (int round = 0; round < chords; ++round)
        sequence += round == 0 ? "a" : ",a";
    CommandDispatcher dispatcher;
    const std::vector<KeyMapEntry> map{{sequence + ",b", CSONValue(std::string("end"))}};
    dispatcher.load(map);
    RecordingTarget target;
    for (int round = 0; round < 1'000; ++round)
        EXPECT_TRUE(dispatcher.handleKeyEvent(press(u"a"), target));
    EXPECT_EQ(dispatcher.pendingSequence().size(), 1'999U);
}

TEST(CommandDispatcher, ValuesMayNestDeeperThanTheStack)
{
    CSONValue value(std::string("copy"));
    for (int depth = 0; depth < 200'000; ++depth)
        value = CSONValue::array({value});
    const EditorCommandList commands = CommandDispatcher::commandsFromValue(value);
    ASSERT_EQ(commands.size(), 1U);
    EXPECT_EQ(commands[0].name, "copy");
}

/// The dispatcher in its plainest form, which holds every beginning of every sequence.
class PlainDispatcher {
public:
    void bind(const std::string& sequence, const std::string& name)
    {
        std::vector<std::string> chords = KeyTranslator::sequenceSplit(sequence);
        if (chords.empty())
            return;
        names_[KeyTranslator::joinedSequence(chords)] = name;
        for (chords.pop_back(); !chords.empty(); chords.pop_back())
            beginnings_.insert(KeyTranslator::joinedSequence(chords));
    }
    /// "unbound", "pending", "beep", or the name that the chord runs.
    std::string press(const std::string& chord)
    {
        const std::string broken = pending_;
        const std::string first = follow(pending_.empty() ? chord : pending_ + "," + chord);
        if (first != "unbound" || broken.empty())
            return first;
        const std::string second = follow(chord);
        return second == "unbound" ? "beep" : second;
    }

private:
    std::string follow(const std::string& candidate)
    {
        pending_.clear();
        if (const auto found = names_.find(candidate); found != names_.end())
            return found->second;
        if (!beginnings_.contains(candidate))
            return "unbound";
        pending_ = candidate;
        return "pending";
    }

    std::map<std::string, std::string> names_;
    std::set<std::string> beginnings_;
    std::string pending_;
};

std::string outcomeOf(CommandDispatcher& dispatcher, const std::string& chord)
{
    RecordingTarget target;
    const bool isConsumed =
        dispatcher.handleKeyEvent(press(std::u16string(chord.begin(), chord.end())), target);
    if (!isConsumed)
        return "unbound";
    if (target.beeps > 0)
        return "beep";
    return target.ran.empty() ? "pending" : target.ran.front();
}

TEST(CommandDispatcher, AgreesWithAPlainTableOnRandomMaps)
{
    constexpr unsigned seed = 23;
    std::mt19937 random(seed);
    const std::vector<std::string> parts{"a", "b", "cmd+", "+", ",", ",", ",", "c"};
    const std::vector<std::string> chords{"a", "b", "c", ",", "a,", ",a", "cmd+,", "cmd+a", "+"};
    std::size_t pendings = 0;
    for (int round = 0; round < 2'000; ++round) {
        PlainDispatcher plain;
        std::vector<KeyMapEntry> map;
        for (int entry = 0; entry < 6; ++entry) {
            std::string sequence;
            for (std::size_t length = random() % 9; length > 0; --length)
                sequence += parts[random() % parts.size()];
            const std::string name = "command" + std::to_string(entry);
            map.push_back({sequence, CSONValue(name)});
            plain.bind(sequence, name);
        }
        CommandDispatcher dispatcher;
        dispatcher.load(map);
        for (int key = 0; key < 40; ++key) {
            const std::string& chord = chords[random() % chords.size()];
            const std::string expected = plain.press(chord);
            ASSERT_EQ(outcomeOf(dispatcher, chord), expected) << "round " << round;
            pendings += expected == "pending" ? 1 : 0;
        }
    }
    EXPECT_GT(pendings, 1'000U);
}

TEST(EditorCommand, ReadsWholeNumbers)
{
    EXPECT_EQ(command("{x n: 7}").integer("n", 2), 7);
    EXPECT_EQ(command("{x n: -1}").integer("n", 2), -1);
    EXPECT_EQ(command("{x n: 2.9}").integer("n", 5), 2);
    EXPECT_EQ(command("{x n: -2.9}").integer("n", 5), -2);
    EXPECT_EQ(command("{x n: true}").integer("n", 5), 1);
    EXPECT_EQ(command("{x n: false}").integer("n", 5), 0);
    EXPECT_EQ(command("{x n: 1e300}").integer("n", 5), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(command("{x n: -1e300}").integer("n", 5), std::numeric_limits<std::int64_t>::min());
}

TEST(EditorCommand, TakesTheDefaultForAnyOtherShape)
{
    for (const char* text : {"{x}", "{x n: \"7\"}", "{x n: seven}", "{x n: none}", "{x n: [7]}",
                             "{x n: {7}}", "{x N: 7}"}) {
        EXPECT_EQ(command(text).integer("n", 2), 2) << text;
        EXPECT_TRUE(command(text).truth("n", true)) << text;
        EXPECT_FALSE(command(text).truth("n", false)) << text;
    }
}

TEST(EditorCommand, ReadsTruthValues)
{
    EXPECT_TRUE(command("{x n: true}").truth("n", false));
    EXPECT_FALSE(command("{x n: false}").truth("n", true));
    EXPECT_TRUE(command("{x n: 1}").truth("n", false));
    EXPECT_TRUE(command("{x n: -3}").truth("n", false));
    EXPECT_TRUE(command("{x n: 0.5}").truth("n", false));
    EXPECT_FALSE(command("{x n: 0}").truth("n", true));
    EXPECT_FALSE(command("{x n: 0.0}").truth("n", true));
}

TEST(CommandTable, HasEveryCommandOnce)
{
    EXPECT_EQ(commandTable.size(), 57U);
    for (const CommandTableRow& row : commandTable)
        EXPECT_EQ(commandTableRow(row.name), &row) << row.name;
    EXPECT_EQ(commandTableRow("Copy"), nullptr);
    EXPECT_EQ(commandTableRow(""), nullptr);
}

TEST(CommandTable, KnowsTheArgumentsAndTheirDefaults)
{
    const auto argument = [](std::string_view name) { return commandTableRow(name)->argument; };
    EXPECT_EQ(argument("moveCursor").name, "offset");
    EXPECT_EQ(argument("moveCursor").defaultValue, 0);
    EXPECT_EQ(argument("skipWord").name, "forward");
    EXPECT_EQ(argument("skipWord").kind, CommandArgument::Kind::truth);
    EXPECT_EQ(argument("skipWord").defaultValue, 1);
    EXPECT_EQ(argument("page").name, "down");
    EXPECT_EQ(argument("line").defaultValue, 1);
    EXPECT_EQ(argument("camelCase").defaultValue, 2);
    EXPECT_EQ(argument("typeCase").name, "words");
    EXPECT_EQ(argument("titleCase").kind, CommandArgument::Kind::integer);
    EXPECT_EQ(argument("setCursor").defaultValue, 0);
    EXPECT_EQ(argument("moveToEditor").name, "editor");
    EXPECT_EQ(argument("moveToEditor").defaultValue, 1);
    EXPECT_EQ(argument("copy").kind, CommandArgument::Kind::none);
}

TEST(DefaultKeyMap, HasItsEntriesInOrder)
{
    const std::vector<KeyMapEntry> all = defaultKeyMapEntries();
    ASSERT_EQ(all.size(), 63U);
    for (std::size_t index = 0; index < all.size(); ++index)
        EXPECT_EQ(all[index].sequence, defaultKeyMap[index].chord);
    EXPECT_EQ(defaultKeyMap.front().chord, "left");
    EXPECT_EQ(defaultKeyMap[33].chord, "ctrl+shift+,");
    EXPECT_EQ(defaultKeyMap[34].chord, "ctrl+shift+z");
    EXPECT_EQ(defaultKeyMap.back().chord, "cmd+4");
}

TEST(DefaultKeyMap, HoldsCanonicalChordsOfKnownCommandsAndArguments)
{
    std::set<std::string> chords;
    for (const KeyMapEntry& entry : defaultKeyMapEntries()) {
        EXPECT_EQ(KeyTranslator::sequenceSplit(entry.sequence),
                  std::vector<std::string>{entry.sequence});
        EXPECT_TRUE(chords.insert(entry.sequence).second) << entry.sequence;
        const EditorCommandList commands = CommandDispatcher::commandsFromValue(entry.value);
        EXPECT_FALSE(commands.empty()) << entry.sequence;
        for (const EditorCommand& bound : commands) {
            const CommandTableRow* row = commandTableRow(bound.name);
            ASSERT_NE(row, nullptr) << bound.name;
            for (const auto& [name, value] : bound.arguments)
                EXPECT_EQ(name, row->argument.name) << bound.name;
        }
    }
}

TEST(DefaultKeyMap, LeavesSixCommandsWithoutAChord)
{
    std::set<std::string_view> unbound;
    for (const CommandTableRow& row : commandTable)
        unbound.insert(row.name);
    for (const KeyMapEntry& entry : defaultKeyMapEntries())
        for (const EditorCommand& bound : CommandDispatcher::commandsFromValue(entry.value))
            unbound.erase(bound.name);
    EXPECT_EQ(unbound, (std::set<std::string_view>{"sortLines", "toggleTree", "closeAllFiles",
                                                   "newView", "moveToEditor", "titleCase"}));
}

TEST(KeyMapFromCSON, KeepsTheOrderOfTheText)
{
    std::vector<std::string> names;
    for (const KeyMapEntry& entry :
         entries(R"({z: 1 "a,b": [x {y: "}"}] "q\"]": "\\" m: {} b: none})"))
        names.push_back(entry.sequence);
    EXPECT_EQ(names, (std::vector<std::string>{"z", "a,b", "q\"]", "m", "b"}));
}

TEST(KeyMapFromCSON, TakesTheLastOfTwoMembersOfOneName)
{
    const std::vector<KeyMapEntry> all = entries("{a: 1 b: 2 a: 3}");
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[0].sequence, "b");
    EXPECT_EQ(all[1].sequence, "a");
    EXPECT_EQ(all[1].value.integer(), 3);
}

TEST(KeyMapFromCSON, FindsASection)
{
    const auto inSection = [](std::string_view text) {
        return keyMapFromCSON(text, "keys").value();
    };
    const auto all = inSection(R"({editor: {keys: {n: 1}} keys: {old: 1} keys: {z: 1, a: 2}})");
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[0].sequence, "z");
    EXPECT_EQ(all[1].sequence, "a");
    EXPECT_TRUE(inSection("{editor: {}}").empty());
    EXPECT_TRUE(inSection("{keys: [a b]}").empty());
    EXPECT_TRUE(inSection("{keys: {}}").empty());
    EXPECT_TRUE(inSection("[keys]").empty());
    EXPECT_TRUE(inSection("keys").empty());
}

TEST(KeyMapFromCSON, GivesTheReadersError)
{
    EXPECT_EQ(keyMapFromCSON("{a").error().message, "Expected '}' at 1:3");
    EXPECT_EQ(keyMapFromCSON("{a", "keys").error().message, "Expected '}' at 1:3");
    EXPECT_FALSE(keyMapFromCSON("{a: 1.2.3}"));
    EXPECT_TRUE(keyMapFromCSON("[a]").value().empty());
}

}  // namespace
}  // namespace tavrel
