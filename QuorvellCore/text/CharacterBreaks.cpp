// SPDX-License-Identifier: MIT
#include "QuorvellCore/text/CharacterBreaks.h"

#include <unicode/brkiter.h>
#include <unicode/utext.h>

namespace quorvell {

namespace {

/// ASCII that never joins with the ASCII after it: only CR does.
bool standsAlone(char letter)
{
    return static_cast<unsigned char>(letter) < 0x80 && letter != '\r';
}

} // namespace

struct CharacterBreaks::Rules {
    explicit Rules(std::string_view text)
    {
        utext_openUTF8(&source, text.data(), static_cast<std::int64_t>(text.size()), &status);
        breaks.reset(icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
        if (breaks)
            breaks->setText(&source, status);
    }
    ~Rules() { utext_close(&source); }
    Rules(const Rules&) = delete;
    Rules& operator=(const Rules&) = delete;

    UErrorCode status = U_ZERO_ERROR;
    UText source = UTEXT_INITIALIZER;
    std::unique_ptr<icu::BreakIterator> breaks;
};

CharacterBreaks::CharacterBreaks(std::string_view text)
    : m_text(text)
{
}

CharacterBreaks::~CharacterBreaks() = default;

bool CharacterBreaks::next()
{
    m_start = m_end;
    if (m_start == m_text.size())
        return false;
    const bool isLast = m_start + 1 == m_text.size();
    if (standsAlone(m_text[m_start]) && (isLast || static_cast<unsigned char>(m_text[m_start + 1]) < 0x80))
        m_end = m_start + 1;
    else
        m_end = endByRules();
    return true;
}

std::size_t CharacterBreaks::endByRules()
{
    if (!m_rules)
        m_rules = std::make_unique<Rules>(m_text);
    if (U_FAILURE(m_rules->status))
        return m_text.size();
    const std::int32_t end = m_rules->breaks->following(static_cast<std::int32_t>(m_start));
    return end == icu::BreakIterator::DONE ? m_text.size() : static_cast<std::size_t>(end);
}

} // namespace quorvell
