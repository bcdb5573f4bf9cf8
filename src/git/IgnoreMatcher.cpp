#include "git/IgnoreMatcher.h"

#include "platform/Unicode.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <array>
#include <unicode/utf8.h>

namespace tavrel {
namespace {

using Kind = IgnoreStep::Kind;
using Word = std::uint64_t;
constexpr std::size_t wordBits = 64;

void appendUtf8(std::string& out, char32_t character)
{
    std::array<char, U8_MAX_LENGTH> bytes{};
    std::size_t length = 0;
    U8_APPEND_UNSAFE(bytes.data(), length, character);
    out.append(bytes.data(), length);
}

/// The characters of the steps from `first` to `last` as UTF-8.
std::string literalOf(std::vector<IgnoreStep>::const_iterator first,
                      std::vector<IgnoreStep>::const_iterator last)
{
    std::string literal;
    for (; first != last; ++first)
        appendUtf8(literal, first->character);
    return literal;
}

bool isCharacter(const IgnoreStep& step)
{
    return step.kind == Kind::character;
}

/// Joins the steps of sets that the library sees as one: a set with brackets inside goes on behind
/// the first closing one, as in "[[:alpha:]]". False where a set never ends.
bool joinClasses(std::vector<IgnoreStep>& steps, std::vector<CharacterClass>& classes)
{
    std::vector<IgnoreStep> joined;
    for (std::size_t index = 0; index < steps.size(); ++index) {
        joined.push_back(std::move(steps[index]));
        IgnoreStep& step = joined.back();
        if (step.kind != Kind::characterClass)
            continue;
        auto compiled = CharacterClass::compile(step.expression);
        while (!compiled) {
            if (++index == steps.size())
                return false;
            step.expression += steps[index].expression;
            if (isCharacter(steps[index]) && steps[index].character == U']')
                compiled = CharacterClass::compile(step.expression);
        }
        classes.push_back(std::move(*compiled));
    }
    steps = std::move(joined);
    return true;
}

/// Whether the regular expression's "$" matches before `rest`, the end of a path behind `before`.
bool isFinalTerminator(std::string_view before, std::string_view rest)
{
    if (rest == "\r\n")
        return true;
    if (rest == "\n")
        return !before.ends_with('\r');
    return rest == "\v" || rest == "\f" || rest == "\r" || rest == "\xC2\x85" ||
           rest == "\xE2\x80\xA8" || rest == "\xE2\x80\xA9";
}

char32_t takeCharacter(std::string_view path, std::size_t& position)
{
    const auto byte = static_cast<unsigned char>(path[position]);
    if (byte < CharacterClass::asciiCount) {
        ++position;
        return byte;
    }
    UChar32 character = 0;
    U8_NEXT_OR_FFFD(path.data(), position, path.size(), character);
    return static_cast<char32_t>(character);
}

}  // namespace

bool isPlainPath(std::string_view path)
{
    for (std::size_t position = 0; position < path.size();) {
        if (isNewline(takeCharacter(path, position)))
            return false;
    }
    return true;
}

/// The steps of a pattern as bits: bit n is set while a match may stand before step n, and the bit
/// behind the last step once the pattern is through.
struct IgnoreMatcher::Program {
    explicit Program(const IgnoreTranslation& translation, std::vector<CharacterClass> sets);

    bool matches(const IgnorePath& path) const;

private:
    using Bits = std::vector<Word>;

    /// Words that lie on the stack for all but the longest patterns.
    class Words {
    public:
        explicit Words(std::size_t count) : many_(count > few_.size() ? count : 0) {}
        Word* data() { return many_.empty() ? few_.data() : many_.data(); }
        Word& operator[](std::size_t index) { return data()[index]; }

    private:
        std::array<Word, 4> few_{};
        Bits many_;
    };
    struct OtherCharacter {
        char32_t character;
        std::size_t bit;
    };
    struct OtherClass {
        std::size_t index;
        std::size_t bit;
    };
    /// Where a match may stand. `entered` is the part of the folder bits that were set just now:
    /// they wait for a name and cannot pass a slash.
    struct State {
        explicit State(std::size_t count) : active(count), entered(count), scratch(count) {}

        Words active;
        Words entered;
        Words scratch;
    };

    static void setBit(Word* bits, std::size_t bit)
    {
        bits[bit / wordBits] |= Word{1} << (bit % wordBits);
    }
    static bool isSet(const Word* bits, std::size_t bit)
    {
        return (bits[bit / wordBits] >> (bit % wordBits) & 1) != 0;
    }
    const Word* takers(char32_t character, State& state) const;
    bool take(char32_t character, bool mayStart, State& state) const;
    void leaveOut(Words& bits) const;
    bool isThrough(State& state) const { return isSet(state.active.data(), stepCount_); }

    std::size_t stepCount_;
    std::size_t wordCount_;
    bool isAnchored_;
    Bits ascii_;      // `wordCount_` words for each character: the steps that can take it.
    Bits others_;     // The steps that can take any other character.
    Bits anything_;   // Of these, the ones that take no line terminator.
    Bits repeating_;  // The steps "*" and "**", which stay where they are.
    Bits folders_;    // The steps "**/".
    std::vector<CharacterClass> classes_;
    std::vector<OtherCharacter> otherCharacters_;
    std::vector<OtherClass> otherClasses_;
};

IgnoreMatcher::Program::Program(const IgnoreTranslation& translation,
                                std::vector<CharacterClass> sets)
    : stepCount_(translation.steps.size()), wordCount_(stepCount_ / wordBits + 1),
      isAnchored_(translation.isAnchored), ascii_(CharacterClass::asciiCount * wordCount_),
      others_(wordCount_), anything_(wordCount_), repeating_(wordCount_), folders_(wordCount_),
      classes_(std::move(sets))
{
    std::size_t nextClass = 0;
    for (std::size_t bit = 0; bit < stepCount_; ++bit) {
        const IgnoreStep& step = translation.steps[bit];
        const CharacterClass* set =
            step.kind == Kind::characterClass ? &classes_[nextClass] : nullptr;
        const auto takes = [&](char32_t character) {
            switch (step.kind) {
            case Kind::character:
                return character == step.character;
            case Kind::notSlash:
            case Kind::notSlashes:
                return character != U'/';
            case Kind::folders:
                return true;
            case Kind::anything:
                return !isNewline(character);
            case Kind::characterClass:
                return set->contains(character);
            }
            return false;
        };
        for (char32_t character = 0; character < CharacterClass::asciiCount; ++character) {
            if (takes(character))
                setBit(ascii_.data() + character * wordCount_, bit);
        }
        switch (step.kind) {
        case Kind::character:
            if (step.character >= CharacterClass::asciiCount)
                otherCharacters_.push_back({step.character, bit});
            break;
        case Kind::characterClass:
            otherClasses_.push_back({nextClass++, bit});
            break;
        case Kind::folders:
            setBit(folders_.data(), bit);
            setBit(others_.data(), bit);
            break;
        case Kind::anything:
            setBit(anything_.data(), bit);
            setBit(repeating_.data(), bit);
            setBit(others_.data(), bit);
            break;
        case Kind::notSlashes:
            setBit(repeating_.data(), bit);
            [[fallthrough]];
        case Kind::notSlash:
            setBit(others_.data(), bit);
            break;
        }
    }
}

/// The active steps that can take `character`, and others; made anew where it is not ASCII.
const Word* IgnoreMatcher::Program::takers(char32_t character, State& state) const
{
    Words& scratch = state.scratch;
    if (character < CharacterClass::asciiCount)
        return ascii_.data() + character * wordCount_;
    std::copy(others_.begin(), others_.end(), scratch.data());
    if (isNewline(character)) {
        for (std::size_t word = 0; word < wordCount_; ++word)
            scratch[word] &= ~anything_[word];
    }
    for (const OtherCharacter& other : otherCharacters_) {
        if (other.character == character)
            setBit(scratch.data(), other.bit);
    }
    for (const OtherClass& other : otherClasses_) {
        if (isSet(state.active.data(), other.bit) && classes_[other.index].contains(character))
            setBit(scratch.data(), other.bit);
    }
    return scratch.data();
}

/// Adds the bits that are reached by leaving out steps which may match nothing. The addition
/// carries each bit through the steps of that kind that follow it without a gap.
void IgnoreMatcher::Program::leaveOut(Words& bits) const
{
    Word carry = 0;
    for (std::size_t word = 0; word < wordCount_; ++word) {
        const Word optional = repeating_[word] | folders_[word];
        bits[word] |= carry;
        const Word sum = optional + (bits[word] & optional);
        carry = sum < optional ? 1 : 0;
        bits[word] |= sum ^ optional;
    }
}

/// Moves on by one character. False when no position is left and none can come.
bool IgnoreMatcher::Program::take(char32_t character, bool mayStart, State& state) const
{
    const bool isSlash = character == U'/';
    const Word* taking = takers(character, state);
    Words& active = state.active;
    Words& entered = state.entered;
    Word shifted = mayStart ? 1 : 0;
    for (std::size_t word = 0; word < wordCount_; ++word) {
        Word taken = active[word] & taking[word];
        if (isSlash)
            taken &= ~entered[word];
        const Word inFolders = taken & folders_[word];
        const Word staying = taken & repeating_[word];
        const Word passing =
            (taken & ~folders_[word] & ~repeating_[word]) | (isSlash ? inFolders : 0);
        active[word] = (passing << 1) | shifted | staying;
        shifted = passing >> (wordBits - 1);
        entered[word] = inFolders;
    }
    leaveOut(active);
    Word any = 0;
    for (std::size_t word = 0; word < wordCount_; ++word) {
        const Word inFolders = entered[word];
        entered[word] = active[word] & folders_[word] & ~inFolders;
        active[word] |= inFolders;
        any |= active[word];
    }
    return any != 0 || !isAnchored_;
}

bool IgnoreMatcher::Program::matches(const IgnorePath& path) const
{
    State state(wordCount_);
    state.active[0] = 1;
    leaveOut(state.active);
    for (std::size_t word = 0; word < wordCount_; ++word)
        state.entered[word] = state.active[word] & folders_[word];
    bool mayStartLater = !isAnchored_;
    for (std::size_t position = 0; position < path.path.size();) {
        if (!path.isPlain && isThrough(state) &&
            isFinalTerminator(path.path.substr(0, position), path.path.substr(position)))
            return true;
        const char32_t character = takeCharacter(path.path, position);
        mayStartLater = mayStartLater && !isNewline(character);
        if (!take(character, mayStartLater && character == U'/', state))
            return false;
    }
    return isThrough(state);
}

std::optional<IgnoreMatcher> IgnoreMatcher::make(std::u16string_view pattern)
{
    IgnoreTranslation translation = translateIgnorePattern(pattern);
    std::vector<CharacterClass> classes;
    const bool hasClass =
        std::any_of(translation.steps.begin(), translation.steps.end(),
                    [](const IgnoreStep& step) { return step.kind == Kind::characterClass; });
    if (translation.expression.size() > RegularExpression::maximumPatternLength)
        return std::nullopt;
    if (hasClass && (!RegularExpression::compile(translation.expression) ||
                     !joinClasses(translation.steps, classes)))
        return std::nullopt;
    IgnoreMatcher matcher;
    matcher.pattern_ = pattern;
    matcher.setShape(translation);
    if (matcher.shape_ == Shape::general)
        matcher.program_ = std::make_shared<const Program>(translation, std::move(classes));
    return matcher;
}

/// Finds the patterns that are a comparison of strings, and for the others the end of a match.
void IgnoreMatcher::setShape(const IgnoreTranslation& translation)
{
    const auto& steps = translation.steps;
    const bool isAnchored = translation.isAnchored;
    const auto others = std::count_if(steps.begin(), steps.end(),
                                      [](const IgnoreStep& step) { return !isCharacter(step); });
    const auto begin = steps.begin();
    const auto end = steps.end();
    if (others == 0) {
        shape_ = isAnchored ? Shape::path : Shape::name;
        literal_ = literalOf(begin, end);
    } else if (others == 1 && !isAnchored && begin->kind == Kind::notSlashes) {
        shape_ = Shape::nameSuffix;
        literal_ = literalOf(begin + 1, end);
    } else if (others == 1 && !isAnchored && steps.back().kind == Kind::notSlashes) {
        shape_ = Shape::namePrefix;
        literal_ = literalOf(begin, end - 1);
    } else if (others == 1 && isAnchored && steps.back().kind == Kind::anything) {
        shape_ = Shape::pathPrefix;
        literal_ = literalOf(begin, end - 1);
    } else {
        auto suffix = end;
        while (suffix != begin && isCharacter(*(suffix - 1)))
            --suffix;
        literal_ = literalOf(suffix, end);
    }
}

bool IgnoreMatcher::matches(const IgnorePath& path) const
{
    if (path.isPlain)
        return matchesPlain(path);
    return program_ ? program_->matches(path)
                    : Program(translateIgnorePattern(pattern_), {}).matches(path);
}

bool IgnoreMatcher::matchesPlain(const IgnorePath& path) const
{
    switch (shape_) {
    case Shape::name:
        return path.name == literal_;
    case Shape::nameSuffix:
        return path.name.ends_with(literal_);
    case Shape::namePrefix:
        return path.name.starts_with(literal_);
    case Shape::path:
        return path.path == literal_;
    case Shape::pathPrefix:
        return path.path.starts_with(literal_);
    case Shape::general:
        break;
    }
    return path.path.ends_with(literal_) && program_->matches(path);
}

}  // namespace tavrel
