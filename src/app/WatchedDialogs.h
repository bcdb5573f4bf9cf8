#pragma once

#include "app/ModalDialogs.h"

#include <functional>
#include <memory>

namespace tavrel {

/// Asks through other dialogs, and knows whether one of them is open: the program goes on
/// meanwhile, and whatever else would ask waits until the user has answered. Main thread only.
class WatchedDialogs final : public ModalDialogs {
public:
    explicit WatchedDialogs(std::unique_ptr<ModalDialogs> dialogs) : dialogs_(std::move(dialogs)) {}

    /// Not while one is open.
    void setDialogs(std::unique_ptr<ModalDialogs> dialogs) { dialogs_ = std::move(dialogs); }

    bool isOpen() const { return openCount_ > 0; }

    /// The last one has closed; its answer has not reached whoever asked. May be empty.
    std::function<void()> didClose;

    std::size_t ask(const EditorPaneAlert& alert) override;
    std::optional<std::u16string> askForText(const EditorPaneAlert& alert,
                                             std::u16string_view text) override;
    std::vector<std::filesystem::path> filesToOpen(const std::filesystem::path& folder) override;
    std::optional<std::filesystem::path>
    saveLocation(const std::filesystem::path& proposed) override;

private:
    template<class Ask>
    auto whileOpen(Ask ask);

    std::unique_ptr<ModalDialogs> dialogs_;
    int openCount_ = 0;
};

}  // namespace tavrel
