#include "config/PreferencesStore.h"
#include "platform/MainQueue.h"
#include "platform/Utf8.h"
#include "terminal/ShellLaunch.h"
#include "terminal/TerminalSession.h"
#include "terminal/TerminalViewController.h"

#include <algorithm>
#include <system_error>
#include <utility>

// Sessions: how they are made, how their shells start and end, and how bytes flow between the two.

namespace tavrel {

TerminalViewController::SessionPointer TerminalViewController::makeSession()
{
    const TerminalSize size =
        (view_ ? view_->fittingSize() : std::nullopt).value_or(TerminalSize{});
    auto session = std::make_shared<TerminalSession>(size.columns, size.rows);
    applyHistoryLimit(*session);
    // The emulator is the session's own, so its callbacks cannot outlive the session.
    TerminalSession* const owner = session.get();
    session->emulator.onUpdate = [this, owner] { emulatorDidUpdate(*owner); };
    session->emulator.onBell = [this] { ringBell(); };
    session->emulator.onResponse = [owner](std::string_view reply) { writeReply(*owner, reply); };
    return session;
}

void TerminalViewController::ringBell()
{
    // Each is a request to the desktop, and a program may write a million of them in a second. What
    // comes while one sounds is heard with it.
    constexpr double soundSeconds = 0.1;
    if (isBellSounding_)
        return;
    isBellSounding_ = true;
    services_.mainQueue.postAfter(soundSeconds, [weak = std::weak_ptr(self_)] {
        if (const auto self = weak.lock())
            (*self)->isBellSounding_ = false;
    });
    if (delegate_)
        delegate_->terminalDidRingBell(*this);
}

void TerminalViewController::writeReply(TerminalSession& session, std::string_view reply)
{
    // A program that asks without end and never reads its answers gets no more of them. A long
    // paste on its way does not count.
    constexpr std::size_t maximumUnread = 65'536;
    if (session.process->unwrittenBytes() == 0)
        session.unreadReplyBytes = 0;
    session.unreadReplyBytes += reply.size();
    if (session.unreadReplyBytes <= maximumUnread)
        session.process->write(reply);
}

void TerminalViewController::applyHistoryLimit(TerminalSession& session) const
{
    session.emulator.setScrollbackLimit(static_cast<std::size_t>(
        std::max<std::int64_t>(services_.preferences.values().terminalHistoryLines, 0)));
    session.emulator.applyScrollbackLimit();
}

void TerminalViewController::start(const SessionPointer& session)
{
    if (session->started)
        return;
    session->started = true;
    syncGridSize();
    std::error_code error;
    const std::filesystem::path& preferred = session->preferredWorkingDirectory;
    const bool takesPreferred =
        !preferred.empty() && std::filesystem::is_directory(preferred, error);
    const std::string directory = (takesPreferred ? preferred : services_.homeFolder).string();
    const std::string shell =
        resolveShell({services_.loginShell, services_.environment.value("SHELL").value_or(""),
                      services_.homeFolder},
                     isExecutableFile);
    ShellEnvironment additions{shell, directory, services_.terminfoFolder.string()};
    if (!isLocaleInstalled(additions.language))
        additions.language = "C.UTF-8";
    connect(session);
    const auto started = session->process->start(
        {shell, shellArguments(shell), shellEnvironment(services_.environment, additions),
         directory, session->emulator.columns(), session->emulator.rows()});
    if (!started)
        showMessage(*session, u"Unable to start shell " + utf16FromUtf8(shell) + u": " +
                                  utf16FromUtf8(started.error().message) + u"\r\n");
}

void TerminalViewController::connect(const SessionPointer& session)
{
    // Both callbacks come from the queue of the process. They do nothing but put bytes aside and
    // post to the main queue, which alone looks into the weak references.
    session->output = std::make_shared<TerminalOutputBuffer>();
    const auto later = [&mainQueue = services_.mainQueue, self = std::weak_ptr(self_),
                        weakSession = std::weak_ptr(session), output = session->output](
                           void (TerminalViewController::*handle)(const SessionPointer&)) {
        mainQueue.post([self, weakSession, output, handle] {
            const auto controller = self.lock();
            const auto target = weakSession.lock();
            // A shell that was started since has another buffer.
            if (controller && target && target->output == output)
                ((*controller)->*handle)(target);
        });
    };
    session->process->setOnOutput([later, output = session->output](std::string_view bytes) {
        if (output->add(bytes))
            later(&TerminalViewController::feedOutput);
    });
    session->process->setOnTermination(
        [later] { later(&TerminalViewController::processDidTerminate); });
    session->postFeed = [later] { later(&TerminalViewController::feedOutput); };
}

void TerminalViewController::feedOutput(const SessionPointer& session)
{
    // One piece in a turn of the queue: keys and drawing keep theirs while a command floods the
    // terminal.
    if (feedPiece(*session))
        session->postFeed();
}

bool TerminalViewController::feedPiece(TerminalSession& session)
{
    TerminalOutputBuffer::Piece piece = session.output->take();
    if (piece.bytes.empty())
        return false;
    session.emulator.feed(piece.bytes);
    session.process->didConsumeOutput(piece.bytes.size());
    session.output->recycle(std::move(piece.bytes));
    return piece.hasMore;
}

void TerminalViewController::processDidTerminate(const SessionPointer& session)
{
    while (feedPiece(*session)) {
    }
    showMessage(*session, u"\r\n[process exited - press Return to restart]\r\n");
    session->started = false;
    session->process = std::make_unique<PTYProcess>();
    session->output.reset();
}

void TerminalViewController::showMessage(TerminalSession& session, std::u16string_view text)
{
    session.emulator.prepareForMessage();
    session.emulator.feedText(text);
}

void TerminalViewController::end(TerminalSession& session)
{
    session.process->setOnTermination(nullptr);
    session.process->setOnOutput(nullptr);
    session.process->terminate();
}

void TerminalViewController::emulatorDidUpdate(const TerminalSession& session)
{
    if (!view_ || activeSession().get() != &session)
        return;
    view_->clearSelection();
    scheduleDisplay();
}

void TerminalViewController::sendInput(std::string_view bytes)
{
    const SessionPointer session = activeSession();
    if (!session)
        return;
    if (session->started)
        type(*session, bytes);
    else if (bytes.find('\r') != std::string_view::npos)
        start(session);
}

void TerminalViewController::type(TerminalSession& session, std::string_view bytes)
{
    if (view_)
        view_->followOutput();
    session.process->write(bytes);
}

void TerminalViewController::print(std::u16string_view text)
{
    const SessionPointer session = activeSession();
    if (!session)
        return;
    std::u16string lines;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool endsLine = text[at] == u'\n';
        if (endsLine && (at == 0 || text[at - 1] != u'\r'))
            lines += u'\r';
        lines += text[at];
    }
    session->emulator.feedText(lines);
}

}  // namespace tavrel
