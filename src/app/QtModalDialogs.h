#pragma once

#include "app/ModalDialogs.h"

#include <QPointer>
#include <QWidget>

namespace tavrel {

/// The toolkit's dialogs, over a window.
class QtModalDialogs final : public ModalDialogs {
public:
    explicit QtModalDialogs(QWidget* window) : window_(window) {}

    std::size_t ask(const EditorPaneAlert& alert) override;
    std::optional<std::u16string> askForText(const EditorPaneAlert& alert,
                                             std::u16string_view text) override;
    std::vector<std::filesystem::path> filesToOpen(const std::filesystem::path& folder) override;
    std::optional<std::filesystem::path>
    saveLocation(const std::filesystem::path& proposed) override;

private:
    QPointer<QWidget> window_;
};

}  // namespace tavrel
