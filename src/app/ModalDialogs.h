#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavrel {

/// A question that stops the user: what it says, and the buttons to answer it with.
struct Alert {
    std::u16string message;
    std::u16string information;
    std::vector<std::u16string>
        buttons;  // The first is what Return presses, the last what Escape does.
};

/// The windows that wait for an answer, so that tests can give it. Main thread only.
class ModalDialogs {
public:
    virtual ~ModalDialogs() = default;
    /// The index of the button that was pressed.
    virtual std::size_t ask(const Alert& alert) = 0;
    /// The text of a field that begins with `text`; nothing unless the first button was pressed.
    virtual std::optional<std::u16string> askForText(const Alert& alert,
                                                     std::u16string_view text) = 0;
    /// The files to open; none when the user changes their mind.
    virtual std::vector<std::filesystem::path> filesToOpen(const std::filesystem::path& folder) = 0;
    /// Where to save; nothing when the user changes their mind. Asks by itself before a file is
    /// replaced.
    virtual std::optional<std::filesystem::path>
    saveLocation(const std::filesystem::path& proposed) = 0;
};

}  // namespace tavrel
