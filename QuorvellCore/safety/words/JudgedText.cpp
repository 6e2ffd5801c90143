// SPDX-License-Identifier: MIT
#include "QuorvellCore/safety/words/JudgedText.h"

#include "QuorvellCore/safety/words/LookAlikes.h"
#include "QuorvellCore/text/CodePoints.h"
#include "QuorvellCore/text/LowerCase.h"

namespace quorvell {

JudgedText::JudgedText(std::string_view text)
    : m_lower(lowerCased(text))
{
    if (isAscii(text))
        return;
    m_plain = plainForm(text);
    m_looks = asItLooks(text);
}

bool JudgedText::contains(std::string_view part) const
{
    return m_lower.find(part) != std::string::npos || m_plain.find(part) != std::string::npos
        || (!m_looks.empty() && m_looks.find(asItLooks(part)) != std::string::npos);
}

} // namespace quorvell
