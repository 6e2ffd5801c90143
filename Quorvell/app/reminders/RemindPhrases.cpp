// SPDX-License-Identifier: MIT
#include "Quorvell/app/reminders/RemindPhrases.h"

#include "QuorvellCore/reminders/phrase/ReminderPhrase.h"

#include <utility>

namespace quorvell {

RemindPhrases::RemindPhrases(std::string phrase, std::istream& input)
{
    if (phrase == "-")
        m_input = &input;
    else
        m_phrase = std::move(phrase);
}

std::optional<std::string> RemindPhrases::next()
{
    return m_input ? nextLine() : std::exchange(m_phrase, std::nullopt);
}

/// A line that is longer than any phrase is cut where it is already too long, so that it is refused as a whole.
std::optional<std::string> RemindPhrases::nextLine()
{
    std::string line;
    std::streambuf& source = *m_input->rdbuf();
    int letter = source.sbumpc();
    if (letter == std::streambuf::traits_type::eof())
        return std::nullopt;
    for (; letter != std::streambuf::traits_type::eof() && letter != '\n'; letter = source.sbumpc()) {
        if (line.size() <= ReminderPhrase::maximumBytes)
            line += static_cast<char>(letter);
    }
    if (line.ends_with('\r'))
        line.pop_back();
    return line;
}

} // namespace quorvell
