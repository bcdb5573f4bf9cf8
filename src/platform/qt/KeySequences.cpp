#include "platform/qt/KeySequences.h"

#include <QString>

#include <array>

namespace tavrel {

namespace {

struct Word {
    std::string_view prefix;
    std::string_view whenCtrl;   // The desktop's name of the modifier,
    std::string_view whenSuper;  // by what the command key is.
};

constexpr std::array words{
    Word{"ctrl+", "Meta+", "Ctrl+"},
    Word{"opt+", "Alt+", "Alt+"},
    Word{"cmd+", "Ctrl+", "Meta+"},
    Word{"shift+", "Shift+", "Shift+"},
};

}  // namespace

QKeySequence keySequence(std::string_view chord, CommandKey commandKey)
{
    std::string name;
    for (const Word& word : words) {
        if (!chord.starts_with(word.prefix) || chord.size() == word.prefix.size())
            continue;
        name += commandKey == CommandKey::ctrl ? word.whenCtrl : word.whenSuper;
        chord.remove_prefix(word.prefix.size());
    }
    return QKeySequence(QString::fromStdString(name + std::string(chord)).toUpper(),
                        QKeySequence::PortableText);
}

}  // namespace tavrel
