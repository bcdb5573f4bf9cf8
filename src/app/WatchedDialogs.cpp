#include "app/WatchedDialogs.h"

namespace tavrel {

template<class Ask>
auto WatchedDialogs::whileOpen(Ask ask)
{
    ++openCount_;
    auto answer = ask();
    if (--openCount_ == 0 && didClose)
        didClose();
    return answer;
}

std::size_t WatchedDialogs::ask(const EditorPaneAlert& alert)
{
    return whileOpen([&] { return dialogs_->ask(alert); });
}

std::optional<std::u16string> WatchedDialogs::askForText(const EditorPaneAlert& alert,
                                                         std::u16string_view text)
{
    return whileOpen([&] { return dialogs_->askForText(alert, text); });
}

std::vector<std::filesystem::path> WatchedDialogs::filesToOpen(const std::filesystem::path& folder)
{
    return whileOpen([&] { return dialogs_->filesToOpen(folder); });
}

std::optional<std::filesystem::path>
WatchedDialogs::saveLocation(const std::filesystem::path& proposed)
{
    return whileOpen([&] { return dialogs_->saveLocation(proposed); });
}

}  // namespace tavrel
