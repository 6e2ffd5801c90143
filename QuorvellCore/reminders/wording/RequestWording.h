// SPDX-License-Identifier: MIT
// The text of a request with what is read out of it once: its lower case and its words.
#pragma once

#include "QuorvellCore/reminders/wording/RequestTokens.h"
#include "QuorvellCore/text/LowerCase.h"

#include <string>

namespace quorvell {

/// Stays where it is: the words point into the text.
class RequestWording {
public:
    explicit RequestWording(std::string text);
    RequestWording(const RequestWording&) = delete;
    RequestWording& operator=(const RequestWording&) = delete;

    const std::string& text() const { return m_text; }
    const LowerCasedText& lower() const { return m_lower; }
    const RequestTokens& tokens() const { return m_tokens; }
    RequestTokens& tokens() { return m_tokens; }

    /// A range of the lower-cased text, in the text as it was written.
    TextRange asWritten(const TextRange& range) const
    {
        return {m_lower.inputPosition(range.start), m_lower.inputEndPosition(range.end)};
    }

private:
    std::string m_text;
    LowerCasedText m_lower;
    RequestTokens m_tokens;
};

} // namespace quorvell
