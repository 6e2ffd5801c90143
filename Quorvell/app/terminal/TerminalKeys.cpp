// SPDX-License-Identifier: MIT
#include "Quorvell/app/terminal/TerminalKeys.h"

#include "QuorvellCore/text/Characters.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace quorvell {

namespace {

constexpr char escape = '\x1b';
constexpr char previousLineKey = '\x10'; // Ctrl+P
constexpr char nextLineKey = '\x0e'; // Ctrl+N
/// Ctrl with A B D E F H K L T U W Y, the line breaks, and the key that deletes to the left. Others would make the
/// editor read on by itself, or mean nothing in one line.
constexpr std::string_view editingKeys = "\x01\x02\x04\x05\x06\x08\x0b\x0c\x14\x15\x17\x19\n\r\x7f";
constexpr std::string_view pasteStart = "\x1b[200~";
constexpr std::string_view pasteEnd = "\x1b[201~";

/// Control sequences that the line editor is given, in the form it knows in every mode of the terminal.
struct KnownSequence {
    std::string_view received;
    std::string_view forEditor;
};
constexpr std::array knownSequences{
    KnownSequence{"\x1b[C", "\x1b[C"}, // right
    KnownSequence{"\x1bOC", "\x1b[C"}, KnownSequence{"\x1b[D", "\x1b[D"}, // left
    KnownSequence{"\x1bOD", "\x1b[D"}, KnownSequence{"\x1b[H", "\x01"}, // home
    KnownSequence{"\x1bOH", "\x01"}, KnownSequence{"\x1b[1~", "\x01"}, KnownSequence{"\x1b[7~", "\x01"},
    KnownSequence{"\x1b[F", "\x05"}, // end
    KnownSequence{"\x1bOF", "\x05"}, KnownSequence{"\x1b[4~", "\x05"}, KnownSequence{"\x1b[8~", "\x05"},
    KnownSequence{"\x1b[1;5C",
        "\x1b"
        "f"}, // a word to the right
    KnownSequence{"\x1b[1;5D",
        "\x1b"
        "b"},
    KnownSequence{"\x1b"
                  "f",
        "\x1b"
        "f"},
    KnownSequence{"\x1b"
                  "b",
        "\x1b"
        "b"},
    KnownSequence{"\x1b\x7f", "\x1b\x08"}, // the word to the left goes
    KnownSequence{"\x1b[3~", "\x1b[3~"}, // delete; the editor is told what it means
};
bool isControl(char letter)
{
    return (letter >= 0 && letter < 0x20) || letter == 0x7F;
}

bool isFinalByte(char byte)
{
    return byte >= 0x40 && byte <= 0x7E;
}

/// How many bytes the sequence at the start of `text` has; nothing while its end is missing.
std::optional<std::size_t> sequenceLength(std::string_view text)
{
    if (text.size() < 2)
        return std::nullopt;
    if (text[1] == '[') {
        for (std::size_t index = 2; index < text.size(); ++index)
            if (isFinalByte(text[index]) || index >= TerminalKeys::longestSequence)
                return index + 1;
        return std::nullopt;
    }
    if (text[1] == 'O')
        return text.size() < 3 ? std::nullopt : std::optional<std::size_t>(3);
    return text[1] == escape ? 1 : 2;
}

/// Of the character that begins with `first`; 1 for a byte that begins none.
std::size_t characterLength(char first)
{
    const auto byte = static_cast<unsigned char>(first);
    return byte < 0xC0 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : byte < 0xF8 ? 4 : 1;
}

void append(std::vector<TerminalInput>& inputs, TerminalInput::Kind kind, std::string_view text)
{
    const bool joins = kind == TerminalInput::Kind::keys && !inputs.empty() && inputs.back().kind == kind;
    if (joins)
        inputs.back().text += text;
    else
        inputs.push_back({kind, std::string(text)});
}

/// Terminals send a line break of the clipboard as a carriage return.
std::string withPlainLineBreaks(const std::string& text)
{
    std::string plain;
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (text[index] != '\r')
            plain += text[index];
        else if (index + 1 == text.size() || text[index + 1] != '\n')
            plain += '\n';
    }
    return plain;
}

} // namespace

std::vector<TerminalInput> TerminalKeys::received(std::string_view bytes)
{
    m_held += bytes;
    std::vector<TerminalInput> inputs;
    while (!m_held.empty() && (m_isPasting ? readPaste(inputs) : readKey(inputs))) { }
    return inputs;
}

void TerminalKeys::giveUpWaiting()
{
    if (!m_isPasting)
        m_held.clear();
}

/// False when more bytes are needed.
bool TerminalKeys::readPaste(std::vector<TerminalInput>& inputs)
{
    const auto end = m_held.find(pasteEnd);
    if (end == std::string::npos) {
        // The end mark may have come in part.
        const std::size_t safe = m_held.size() - std::min(m_held.size(), pasteEnd.size() - 1);
        keep(std::string_view(m_held).substr(0, safe));
        m_held.erase(0, safe);
        return false;
    }
    keep(std::string_view(m_held).substr(0, end));
    m_held.erase(0, end + pasteEnd.size());
    m_isPasting = false;
    if (!m_paste.empty())
        append(inputs, TerminalInput::Kind::pasted, repairUtf8(withPlainLineBreaks(std::exchange(m_paste, {}))));
    return true;
}

bool TerminalKeys::readKey(std::vector<TerminalInput>& inputs)
{
    if (m_held.front() == escape)
        return readSequence(inputs);
    const std::size_t length = characterLength(m_held.front());
    if (m_held.size() < length)
        return false;
    const char first = m_held.front();
    if (first == previousLineKey || first == nextLineKey)
        append(inputs, first == previousLineKey ? TerminalInput::Kind::older : TerminalInput::Kind::newer, {});
    else if (!isControl(first) || editingKeys.find(first) != std::string_view::npos)
        append(inputs, TerminalInput::Kind::keys, std::string_view(m_held).substr(0, length));
    m_held.erase(0, length);
    return true;
}

bool TerminalKeys::readSequence(std::vector<TerminalInput>& inputs)
{
    const auto length = sequenceLength(m_held);
    if (!length)
        return false;
    const std::string sequence = m_held.substr(0, *length);
    m_held.erase(0, *length);
    m_isPasting = sequence == pasteStart;
    if (sequence == "\x1b[A" || sequence == "\x1bOA")
        append(inputs, TerminalInput::Kind::older, {});
    if (sequence == "\x1b[B" || sequence == "\x1bOB")
        append(inputs, TerminalInput::Kind::newer, {});
    for (const KnownSequence& known : knownSequences)
        if (sequence == known.received)
            append(inputs, TerminalInput::Kind::keys, known.forEditor);
    return true;
}

void TerminalKeys::keep(std::string_view pasted)
{
    m_paste += pasted.substr(0, longestPaste - std::min(longestPaste, m_paste.size()));
}

} // namespace quorvell
