// SPDX-License-Identifier: MIT
#include "Quorvell/app/terminal/ShownOutput.h"

#include "QuorvellCore/text/PrintableText.h"

#include <utility>

namespace quorvell {

ShownOutput::ShownOutput(std::ostream& stream, Reader reader, Secrets secrets)
    : m_stream(stream)
    , m_behind(stream.rdbuf(this))
    , m_reader(reader)
    , m_secrets(std::move(secrets))
{
}

ShownOutput::~ShownOutput()
{
    sync();
    m_stream.rdbuf(m_behind);
}

void ShownOutput::control(std::ostream& stream, std::string_view sequence)
{
    auto* shown = dynamic_cast<ShownOutput*>(stream.rdbuf());
    if (shown == nullptr) {
        stream << sequence;
        return;
    }
    shown->give(shown->m_held.size());
    shown->m_behind->sputn(sequence.data(), static_cast<std::streamsize>(sequence.size()));
}

void ShownOutput::faint(std::ostream& stream, std::string_view text, TerminalColour colour)
{
    control(stream, beginFaint(colour));
    stream << text;
    control(stream, endColour(colour));
}

ShownOutput::int_type ShownOutput::overflow(int_type letter)
{
    if (traits_type::eq_int_type(letter, traits_type::eof()))
        return traits_type::not_eof(letter);
    const char byte = traits_type::to_char_type(letter);
    return xsputn(&byte, 1) == 1 ? letter : traits_type::eof();
}

std::streamsize ShownOutput::xsputn(const char* text, std::streamsize count)
{
    const std::string_view more(text, static_cast<std::size_t>(count));
    const std::size_t lineEnd = more.rfind('\n'); // What was held before has none.
    const std::size_t before = m_held.size();
    m_held += more;
    return lineEnd == std::string_view::npos || give(before + lineEnd + 1) ? count : 0;
}

int ShownOutput::sync()
{
    const bool isGiven = give(m_held.size());
    return m_behind->pubsync() == 0 && isGiven ? 0 : -1;
}

bool ShownOutput::give(std::size_t bytes)
{
    std::string text = m_held.substr(0, bytes);
    m_held.erase(0, bytes);
    if (m_reader == Reader::person)
        text = printableText(text);
    text = m_secrets.blanked(std::move(text));
    const auto size = static_cast<std::streamsize>(text.size());
    return m_behind->sputn(text.data(), size) == size;
}

} // namespace quorvell
