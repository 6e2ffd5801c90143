// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/wording/RequestWording.h"

#include <utility>

namespace quorvell {

RequestWording::RequestWording(std::string text)
    : m_text(std::move(text))
    , m_lower(m_text)
    , m_tokens(m_lower, m_text)
{
}

} // namespace quorvell
