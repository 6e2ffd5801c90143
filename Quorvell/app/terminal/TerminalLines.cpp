// SPDX-License-Identifier: MIT
#include "Quorvell/app/terminal/TerminalLines.h"

#include "Quorvell/app/terminal/TerminalColumns.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/ColumnText.h"
#include "QuorvellCore/text/PrintableText.h"

#include <histedit.h>
#include <langinfo.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <clocale>
#include <cstdio>
#include <string_view>
#include <utility>

namespace quorvell {

namespace {

constexpr std::string_view startMarkingPastes = "\x1b[?2004h";
constexpr std::string_view stopMarkingPastes = "\x1b[?2004l";
constexpr std::string_view eraseFromLineStart = "\r\x1b[J";
constexpr char32_t endOfInputKey = 4; // Ctrl+D
constexpr char32_t leftKey = 2; // Ctrl+B
constexpr std::u32string_view eraseLineKeys = U"\x01\x0b"; // Ctrl+A, Ctrl+K

void writeToTerminal(std::string_view text)
{
    std::fflush(stdout); // The editor writes through it.
    [[maybe_unused]] const auto written = write(STDOUT_FILENO, text.data(), text.size());
}

/// The editor measures and prints characters as the locale has them; its texts are UTF-8 here.
void useUtf8()
{
    std::setlocale(LC_CTYPE, "");
    if (std::string_view(nl_langinfo(CODESET)) != "UTF-8")
        std::setlocale(LC_CTYPE, "C.UTF-8");
}

/// Code points of well-formed UTF-8.
std::u32string codePoints(const std::string& text)
{
    std::u32string points;
    for (std::size_t index = 0; index < text.size();) {
        const auto first = static_cast<unsigned char>(text[index++]);
        int further = first < 0xC0 ? 0 : first < 0xE0 ? 1 : first < 0xF0 ? 2 : 3;
        char32_t point = further == 0 ? first : first & (0x3Fu >> further);
        for (; further > 0 && index < text.size(); --further)
            point = (point << 6) | (static_cast<unsigned char>(text[index++]) & 0x3Fu);
        points += point;
    }
    return points;
}

} // namespace

void TerminalLines::CloseEditor::operator()(editline* editor) const
{
    el_end(editor);
}

TerminalLines::TerminalLines(std::string prompt, std::optional<CommandHistoryFile> historyFile, TerminalColour colour)
    : m_colour(colour)
    , m_prompt(std::move(prompt))
    , m_historyFile(std::move(historyFile))
    , m_notifier(std::make_unique<QSocketNotifier>(STDIN_FILENO, QSocketNotifier::Read))
{
    if (m_historyFile)
        m_history = m_historyFile->load();
    useUtf8();
    m_editor.reset(el_init("quorvell", stdin, stdout, stderr));
    el_set(m_editor.get(), EL_CLIENTDATA, this);
    el_set(m_editor.get(), EL_EDITOR, "emacs");
    el_set(m_editor.get(), EL_PROMPT, &TerminalLines::promptOf);
    el_set(m_editor.get(), EL_GETCFN, &TerminalLines::nextKey);
    el_set(m_editor.get(), EL_BIND, "\x1b[3~", "ed-delete-next-char", nullptr);
    m_notifier->setEnabled(false);
    m_patience.setSingleShot(true);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, &m_context, [this] { inputArrived(); });
    QObject::connect(&m_patience, &QTimer::timeout, &m_context, [this] { m_keys.giveUpWaiting(); });
}

TerminalLines::~TerminalLines()
{
    if (m_report) {
        closePrompt();
        writeToTerminal("\n"); // The cursor still stands behind the prompt.
    }
}

void TerminalLines::readNext(Report report)
{
    m_report = std::move(report);
    m_pastes.clear();
    openPrompt();
    m_notifier->setEnabled(true);
    // What was typed ahead comes first; later, since a report may ask for the next line at once.
    if (!m_waiting.empty() || !m_queue.empty())
        QMetaObject::invokeMethod(
            &m_context, [this] { takeWaiting(); }, Qt::QueuedConnection);
}

void TerminalLines::takeWaiting()
{
    takeKeys({});
    for (const TerminalInput& input : std::exchange(m_waiting, {}))
        take(input);
}

void TerminalLines::aside(const std::function<void()>& print)
{
    if (!m_report)
        return print();
    const std::string typed = line();
    const LineInfo* info = el_line(m_editor.get());
    const auto behindCursor =
        codePoints({info->cursor, static_cast<std::size_t>(info->lastchar - info->cursor)}).size();
    eraseLine();
    closePrompt();
    print();
    openPrompt();
    replaceLine(typed);
    m_queue.append(behindCursor, leftKey);
    takeKeys({});
}

void TerminalLines::resized()
{
    el_resize(m_editor.get());
    aside([] {});
}

/// A long line stands on several rows. Some terminals break it anew when their size changes and some do not, so the
/// wider size counts: what was said above is never erased.
void TerminalLines::eraseLine()
{
    const LineInfo* info = el_line(m_editor.get());
    const std::size_t used = columnsOf(m_prompt + std::string(info->buffer, info->cursor));
    if (const std::size_t rowsAbove = used / std::max(m_columns, terminalColumns()); rowsAbove > 0)
        writeToTerminal("\x1b[" + std::to_string(rowsAbove) + "A");
    writeToTerminal(eraseFromLineStart);
}

bool TerminalLines::dropTyped()
{
    if (!m_report || line().empty())
        return false;
    closePrompt();
    writeToTerminal("\n");
    m_pastes.clear();
    openPrompt();
    return true;
}

char* TerminalLines::promptOf(editline* editor)
{
    TerminalLines* self = nullptr;
    el_get(editor, EL_CLIENTDATA, &self);
    return self->m_prompt.data();
}

/// 0 tells the editor that there is nothing more, so it is only asked while something waits.
int TerminalLines::nextKey(editline* editor, wchar_t* key)
{
    TerminalLines* self = nullptr;
    el_get(editor, EL_CLIENTDATA, &self);
    if (self->m_queue.empty())
        return 0;
    *key = static_cast<wchar_t>(self->m_queue.front());
    self->m_queue.erase(0, 1);
    return 1;
}

void TerminalLines::openPrompt()
{
    m_columns = terminalColumns();
    writeToTerminal(beginTyped(m_colour));
    el_set(m_editor.get(), EL_UNBUFFERED, 1); // Raw mode, and an empty line behind the prompt.
    writeToTerminal(startMarkingPastes); // Last: who sees it knows that each key counts by now.
}

void TerminalLines::closePrompt()
{
    el_set(m_editor.get(), EL_UNBUFFERED, 0);
    el_set(m_editor.get(), EL_PREP_TERM, 0);
    writeToTerminal(stopMarkingPastes);
    writeToTerminal(endColour(m_colour));
}

void TerminalLines::inputArrived()
{
    std::array<char, 4096> bytes;
    const auto count = read(STDIN_FILENO, bytes.data(), bytes.size());
    if (count < 0 && (errno == EINTR || errno == EAGAIN))
        return;
    if (count <= 0)
        return finish(std::nullopt);
    el_resize(m_editor.get());
    for (const TerminalInput& input : m_keys.received({bytes.data(), static_cast<std::size_t>(count)}))
        take(input);
    if (m_keys.isWaiting())
        m_patience.start(sequencePatience);
}

void TerminalLines::take(const TerminalInput& input)
{
    if (!m_report) {
        m_waiting.push_back(input);
        return;
    }
    switch (input.kind) {
    case TerminalInput::Kind::keys:
        return takeKeys(input.text);
    case TerminalInput::Kind::pasted:
        return insert(m_pastes.paste(input.text));
    case TerminalInput::Kind::older:
    case TerminalInput::Kind::newer:
        return browse(input.kind);
    }
}

void TerminalLines::browse(TerminalInput::Kind direction)
{
    if (!m_history.isBrowsing())
        m_draftPastes = m_pastes;
    const auto entry = direction == TerminalInput::Kind::older ? m_history.older(line()) : m_history.newer();
    if (!entry)
        return;
    m_pastes = m_history.isBrowsing() ? PastedPieces() : m_draftPastes;
    // An entry of several lines can only have been pasted.
    replaceLine(entry->find('\n') == std::string::npos ? *entry : m_pastes.paste(*entry));
}

void TerminalLines::takeKeys(const std::string& text)
{
    m_queue += codePoints(repairUtf8(text));
    while (!m_queue.empty() && m_report) {
        if (m_queue.front() == endOfInputKey && line().empty())
            return finish(std::nullopt);
        int count = 0;
        const wchar_t* typed = el_wgets(m_editor.get(), &count);
        if (typed != nullptr && count > 0 && (typed[count - 1] == L'\n' || typed[count - 1] == L'\r'))
            finish(line());
    }
}

std::string TerminalLines::line() const
{
    const LineInfo* info = el_line(m_editor.get());
    std::string text(info->buffer, info->lastchar);
    while (text.ends_with('\n') || text.ends_with('\r'))
        text.pop_back();
    return text;
}

void TerminalLines::replaceLine(const std::string& text)
{
    m_queue.insert(0, eraseLineKeys);
    insert(text, eraseLineKeys.size());
}

/// As if it were typed: only then does the editor know what stands on the screen and draw over it.
void TerminalLines::insert(const std::string& text, std::size_t position)
{
    std::u32string keys = codePoints(printableText(text));
    std::replace_if(
        keys.begin(), keys.end(), [](char32_t key) { return key < U' ' || key == U'\x7f'; }, U' ');
    m_queue.insert(position, keys);
    takeKeys({});
}

void TerminalLines::finish(const std::optional<std::string>& line)
{
    m_notifier->setEnabled(false);
    closePrompt();
    if (!line)
        writeToTerminal("\n");
    const Report report = std::exchange(m_report, nullptr);
    if (!line)
        return report(std::nullopt);
    TypedMessage message = m_pastes.message(*line);
    const std::string text = message.text();
    m_history.add(text);
    if (m_historyFile)
        m_historyFile->append(text);
    report(std::move(message));
}

} // namespace quorvell
