#include "editor/Completion.h"

#include "editor/TextCursor.h"
#include "highlight/CppKeywords.h"
#include "platform/Unicode.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <sstream>
#include <unordered_map>
#include <utility>

namespace tavrel {

namespace {

constexpr std::uint64_t bufferScore = 100;
constexpr std::uint64_t keywordScore = 500;
constexpr std::uint64_t typeScore = 400;
constexpr std::size_t mostCandidates = 50;

struct Candidate {
    std::u16string text;
    std::uint64_t score;
    bool hasExactCase;  // Begins with the partial word as it is written.

    bool operator<(const Candidate& other) const
    {
        if (hasExactCase != other.hasExactCase)
            return hasExactCase;
        if (score != other.score)
            return score > other.score;
        return text < other.text;
    }
};

/// Gathers the words that begin like the partial one, and adds their scores up.
class Scores {
public:
    explicit Scores(std::u16string_view partial)
        : partial_(partial), partialUtf8_(utf8FromUtf16(partial)), beginning_(lowercased(partial)),
          beginningUtf8_(utf8FromUtf16(beginning_))
    {
    }

    void addWords(const WordCounts& words, std::uint64_t scoreOfOne)
    {
        if (beginningUtf8_.empty())
            return;
        const auto first = static_cast<unsigned char>(beginningUtf8_.front());
        words.forEachBeginningWith(first, [&](std::string_view word, std::uint64_t count) {
            add(word, count * scoreOfOne);
        });
    }

    void addNames(const std::set<std::string>& names, std::uint64_t score)
    {
        for (const std::string& name : names)
            add(name, score);
    }

    std::vector<std::u16string> best() const
    {
        std::vector<Candidate> candidates;
        candidates.reserve(scores_.size());
        for (const auto& [word, score] : scores_) {
            std::u16string text = utf16FromUtf8(word);
            const bool hasExactCase = text.starts_with(partial_);
            candidates.push_back({std::move(text), score, hasExactCase});
        }
        const std::size_t count = std::min(candidates.size(), mostCandidates);
        const auto end = candidates.begin() + static_cast<std::ptrdiff_t>(count);
        std::partial_sort(candidates.begin(), end, candidates.end());
        std::vector<std::u16string> best;
        for (auto candidate = candidates.begin(); candidate != end; ++candidate)
            best.push_back(std::move(candidate->text));
        return best;
    }

private:
    void add(std::string_view word, std::uint64_t score)
    {
        if (beginsLikePartial(word) && word != partialUtf8_)
            scores_[word] += score;
    }

    bool beginsLikePartial(std::string_view word) const
    {
        for (std::size_t at = 0; at < word.size(); ++at) {
            const auto byte = static_cast<unsigned char>(word[at]);
            if (byte >= 0x80)
                return lowercased(utf16FromUtf8(word)).starts_with(beginning_);
            if (at < beginningUtf8_.size() && asciiLowercased(byte) != byteOfBeginning(at))
                return false;
        }
        return word.size() >= beginningUtf8_.size();
    }

    unsigned char byteOfBeginning(std::size_t at) const
    {
        return static_cast<unsigned char>(beginningUtf8_[at]);
    }
    static unsigned char asciiLowercased(unsigned char byte)
    {
        return byte >= 'A' && byte <= 'Z' ? static_cast<unsigned char>(byte + ('a' - 'A')) : byte;
    }

    std::u16string_view partial_;
    std::string partialUtf8_;
    std::u16string beginning_;
    std::string beginningUtf8_;
    std::unordered_map<std::string_view, std::uint64_t> scores_;
};

}  // namespace

std::set<std::string> completionKeywords(const LanguageMode& language)
{
    std::set<std::string> keywords = language.keywords;
    if (language.id == "cpp") {
        std::istringstream builtIn{std::string(cppBuiltinKeywords)};
        keywords.insert(std::istream_iterator<std::string>(builtIn), {});
    }
    return keywords;
}

TextRange partialWordRange(const TextSnapshot& text, std::size_t location)
{
    TextCursor cursor(text);
    const std::size_t end = std::min(location, text.length());
    std::size_t start = end;
    while (start > 0) {
        const char16_t unit = cursor.unitAt(start - 1);
        if (unit != u'_' && !isAlphanumeric(unit))
            break;
        --start;
    }
    return {start, end - start};
}

std::vector<std::u16string> completionCandidates(std::u16string_view partial,
                                                 const CompletionSources& sources)
{
    if (partial.empty())
        return {};
    Scores scores(partial);
    scores.addWords(sources.bufferWords, bufferScore);
    if (sources.projectWords)
        scores.addWords(*sources.projectWords, 1);
    scores.addNames(sources.keywords, keywordScore);
    scores.addNames(sources.types, typeScore);
    return scores.best();
}

}  // namespace tavrel
