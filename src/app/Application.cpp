#include "app/Application.h"

#include "app/EditorStyle.h"
#include "app/FileLoader.h"
#include "app/MainWindow.h"
#include "app/ProgramOptions.h"
#include "app/StatusLine.h"
#include "config/BuiltInResources.h"
#include "config/PreferencesStore.h"
#include "config/SettingsOpener.h"
#include "config/SettingsReloader.h"
#include "editor/views/CodeEditorView.h"
#include "editor/views/ViewTheme.h"
#include "git/GitLineDiffer.h"
#include "platform/Calendar.h"
#include "platform/Clock.h"
#include "platform/Environment.h"
#include "platform/PosixFileSystem.h"
#include "platform/PrivateFolder.h"
#include "platform/SerialQueue.h"
#include "platform/ThreadPool.h"
#include "platform/Utf8.h"
#include "platform/qt/QtFolderWatch.h"
#include "platform/qt/QtMainQueue.h"
#include "platform/qt/QtPasteboard.h"
#include "terminal/ShellLaunch.h"
#include "terminal/TerminalViewController.h"
#include "terminal/Terminfo.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLoggingCategory>
#include <QPalette>
#include <QPixmap>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace tavrel {

namespace {

// One for long work, one for what must not wait for that.
constexpr std::size_t backgroundThreads = 2;

QPalette paletteOf(const ViewTheme& theme)
{
    const QColor panel = QColor::fromRgb(theme.panelBackground);
    const QColor text = QColor::fromRgb(theme.foreground);
    const QColor dim = QColor::fromRgb(theme.gutter);
    const QColor selection = QColor::fromRgb(theme.selection);
    QPalette palette(text, panel, panel.lighter(150), panel.darker(150), panel.lighter(120), text,
                     QColor::fromRgb(theme.background));
    palette.setColor(QPalette::Window, panel);
    palette.setColor(QPalette::Highlight, selection);
    palette.setColor(QPalette::HighlightedText, text);
    palette.setColor(QPalette::ToolTipBase, panel);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::PlaceholderText, dim);
    palette.setColor(QPalette::Link, QColor::fromRgb(theme.color(SyntaxToken::link)));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, dim);
    return palette;
}

std::filesystem::path environmentPath(const char* name)
{
    return std::filesystem::path(qgetenv(name).toStdString());
}

// Without one, which takes a full or missing temporary folder, the program does what it can.
std::filesystem::path pathOf(const tl::expected<PrivateFolder, FileError>& folder)
{
    return folder ? folder->path() : std::filesystem::path();
}

// The one run of the program: what lives as long as its window.
class ApplicationRun final : private SettingsReloaderDelegate, private SettingsOpenerDelegate {
public:
    ApplicationRun(const ProgramOptions& options, FileLoader& loader, PosixFileSystem& fileSystem,
                   PreferencesStore& store)
        : options_(options), loader_(loader), fileSystem_(fileSystem),
          privateFolder_(PrivateFolder::create(fileSystem, environmentPath("XDG_RUNTIME_DIR"),
                                               QFile::encodeName(QDir::tempPath()).toStdString())),
          store_(store),
          window_({clock_, mainQueue_, fileSystem, pasteboard_, calendar_, pathOf(privateFolder_),
                   [this](const auto& url) { return store_.languageMode(url); }, &globalQueue_,
                   makeGitLineDiffer()},
                  options.size, store_.values()),
          reloader_(store_, mainQueue_, *this, [](FolderWatchDelegate& delegate) {
              return std::make_unique<QtFolderWatch>(delegate);
          })
    {
        QApplication::setPalette(paletteOf(viewTheme(store_.values().theme)));
        window_.wantsSettings = [this] { openSettings(store_, *this); };
        window_.makeTerminal = [this] { return makeTerminal(); };
        window_.wantsMode = [this](std::string_view id) { openMode(store_, id, *this); };
        window_.didPaintFirst = [this] {
            hasPainted_ = true;
            reloader_.startWatching();
            window_.startWatchingFiles(mainQueue_, [](FolderWatchDelegate& delegate) {
                return std::make_unique<QtFolderWatch>(delegate);
            });
            pictureIfStable();
        };
        if (options_.results)
            window_.pane().files().openSearchResults(*options_.results);
        showLoaded();
        if (!loader_.isFinished())
            loader_.setNotify([this] { mainQueue_.post([this] { showLoaded(); }); });
        window_.show();
    }

    ~ApplicationRun() { loader_.setNotify(nullptr); }

private:
    void settingsReloaderDidReload(ColumnLayout) override
    {
        QApplication::setPalette(paletteOf(viewTheme(store_.values().theme)));
        window_.applyPreferences(store_.values());
    }
    void settingsReloaderDidReport(std::string_view status) override { report(status); }
    void settingsReloaderDidRewrite(const std::filesystem::path& file) override
    {
        window_.columns().reloadUnmodified(file);
    }
    void settingsOpenerDidUpdate(const std::filesystem::path& file) override
    {
        window_.columns().reloadUnmodified(file);
    }
    void settingsOpenerWillShow(const std::filesystem::path& file) override
    {
        window_.pane().openLocation(file);
    }
    void settingsOpenerDidReport(std::string_view status) override { report(status); }
    void report(std::string_view status) { window_.statusLine().setText(utf16FromUtf8(status)); }

    // Written once for all terminals. Without it the system's own description serves.
    const std::filesystem::path& terminfoFolder()
    {
        if (terminfoFolder_.empty() && privateFolder_)
            terminfoFolder_ = writeTerminfo(fileSystem_, privateFolder_->path())
                                  .value_or(std::filesystem::path());
        return terminfoFolder_;
    }

    std::unique_ptr<TerminalViewController> makeTerminal()
    {
        return std::make_unique<TerminalViewController>(
            TerminalServices{.mainQueue = mainQueue_,
                             .preferences = store_,
                             .environment = Environment::ofThisProcess(),
                             .homeFolder = QFile::encodeName(QDir::homePath()).toStdString(),
                             .loginShell = systemLoginShell(),
                             .terminfoFolder = terminfoFolder()});
    }

    // Null where there is no git, or no folder for what it compares.
    GitLineDiffer* makeGitLineDiffer()
    {
        const Environment environment = Environment::ofThisProcess();
        const std::optional<std::string> program = GitTool::findProgram(environment);
        if (!program || !privateFolder_)
            return nullptr;
        return &gitLineDiffer_.emplace(GitTool(*program, environment), fileSystem_, *privateFolder_,
                                       gitQueue_, mainQueue_);
    }

    void showLoaded()
    {
        while (std::optional<FileLoader::Loaded> loaded = loader_.takeNext())
            window_.pane().showLoaded(loaded->path, std::move(loaded->result));
        pictureIfStable();
    }

    void pictureIfStable()
    {
        if (!options_.screenshot || !hasPainted_ || !loader_.isFinished() || isPictureDue_)
            return;
        isPictureDue_ = true;
        mainQueue_.post([this] { writePicture(); });
    }

    void writePicture()
    {
        const QString name =
            QFile::decodeName(QByteArray::fromStdString(options_.screenshot->native()));
        const bool isWritten = window_.grab().save(name, "PNG");
        if (!isWritten)
            std::fprintf(stderr, "tavrel-code: could not write %s\n", options_.screenshot->c_str());
        QCoreApplication::exit(isWritten ? 0 : 1);
    }

    const ProgramOptions& options_;
    FileLoader& loader_;
    PosixFileSystem& fileSystem_;
    SteadyClock clock_;
    QtMainQueue mainQueue_;
    ThreadPool globalQueue_{backgroundThreads};
    QtPasteboard pasteboard_;
    LocalCalendar calendar_;
    tl::expected<PrivateFolder, FileError> privateFolder_;
    std::filesystem::path terminfoFolder_;
    std::optional<GitLineDiffer> gitLineDiffer_;  // Outlives its work, which the queue waits for.
    SerialQueue gitQueue_{globalQueue_, "TavrelCode.GitLineDiff"};
    PreferencesStore& store_;
    MainWindow window_;
    SettingsReloader reloader_;
    bool hasPainted_ = false;
    bool isPictureDue_ = false;
};

}  // namespace

int runApplication(const ProgramOptions& options, char* programName)
{
    // The files are read while the toolkit starts, which takes as long as reading tens of
    // megabytes.
    PosixFileSystem fileSystem;
    FileLoader loader(fileSystem, options.files);
    const BuiltInResources resources;
    PreferencesStore store(fileSystem, resources,
                           QFile::encodeName(QDir::homePath()).toStdString());
    store.load();

    int argumentCount = 1;
    char* arguments[] = {programName, nullptr};
    QApplication::setStyle(new EditorStyle);  // The application owns it.
    // Fonts that cannot show a text are reported once for each attempt; the text shows what is
    // missing.
    QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false"));
    QApplication application(argumentCount, arguments);
    QApplication::setApplicationName(QStringLiteral("tavrel-code"));
    QApplication::setDesktopFileName(QStringLiteral("tavrel-code"));
    const ApplicationRun run(options, loader, fileSystem, store);
    return QApplication::exec();
}

}  // namespace tavrel
