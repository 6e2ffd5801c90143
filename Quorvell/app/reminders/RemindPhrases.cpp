// SPDX-License-Identifier: MIT
#include "Quorvell/app/reminders/RemindPhrases.h"

#include "QuorvellCore/reminders/ReminderPhrase.h"

#include <utility>

namespace quorvell {

RemindPhrases::RemindPhrases(const std::vector<std::string>& words, std::istream& input)
{
    if (words.size() == 1 && words.front() == "-") {
        m_input = &input;
        return;
    }
    m_phrase.emplace();
    for (const std::string& word : words)
        *m_phrase += (m_phrase->empty() ? "" : " ") + word;
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
