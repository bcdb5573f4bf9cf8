#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

namespace tavrel {

class Calendar;
class Clock;
class FileSystem;
class GitLineDiffer;
struct LanguageMode;
class MainQueue;
class Pasteboard;
class WorkQueue;

/// The objects a pane works with. It borrows all but the path.
struct EditorPaneServices {
    const Clock& clock;
    MainQueue& mainQueue;
    FileSystem& fileSystem;
    Pasteboard& pasteboard;
    const Calendar& calendar;
    /// A folder that only this process can read, for the old bytes of a file that is written in
    /// place; empty for none. Then a file in a folder that cannot be written cannot be saved.
    std::filesystem::path asideFolder = {};
    /// The language of a file, never null, also for a text without one. Empty: every text is plain.
    std::function<std::shared_ptr<const LanguageMode>(const std::optional<std::filesystem::path>&)>
        languageModeForURL = {};
    /// Where long texts are looked through beside the main thread; null for nowhere.
    WorkQueue* workQueue = nullptr;
    /// Null: there are no line marks.
    GitLineDiffer* gitLineDiffer = nullptr;
};

/// The preferences a pane follows.
struct EditorPaneSettings {
    int tabWidth = 2;
    int columnWidth = 80;
    bool autoSaveOnFocusLoss = true;
};

}  // namespace tavrel
