// Snapshots are read on other threads while the storage goes on changing. Meant for the thread
// sanitizer, and true without it as well.

#include "editor/PlainText.h"
#include "editor/TextCursor.h"
#include "editor/TextEncoder.h"
#include "editor/TextStorage.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace tavrel {

TEST(TextStorageThreads, ReadSnapshotsWhileTheTextChanges)
{
    RandomTexts random(3);
    TextStorage storage(TextSnapshot(random.units(5000)), 32);
    std::atomic<int> failures = 0;
    for (int round = 0; round < 20; ++round) {
        std::vector<std::thread> readers;
        for (int i = 0; i < 3; ++i) {
            readers.emplace_back(
                [&failures, text = storage.snapshot(), plain = storage.snapshot().text()] {
                    TextCursor cursor(text);
                    std::u16string read;
                    while (!cursor.isAtEnd())
                        read.push_back(cursor.next());
                    const TextSnapshot slice = text.slice({plain.size() / 3, plain.size() / 3});
                    const bool isSame = read == plain && text == plain &&
                                        slice == plain.substr(plain.size() / 3, plain.size() / 3) &&
                                        text.lineCount() == plainLineStarts(plain).size() &&
                                        encodedText(text) == encodedText(TextSnapshot(plain)) &&
                                        text.tokens({0, plain.size()}).length() == plain.size();
                    failures += isSame ? 0 : 1;
                });
        }
        for (int i = 0; i < 100; ++i) {
            storage.replace(random.range(storage.length(), 20), random.units(20));
            storage.setTokens(random.number(storage.length()), TokenRuns(30));
        }
        for (std::thread& reader : readers)
            reader.join();
    }
    EXPECT_EQ(failures, 0);
}

}  // namespace tavrel
