// SPDX-License-Identifier: MIT
// Finds words of several languages, in each form in which they are written.
#pragma once

#include "QuorvellCore/safety/words/WordMatcher.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct Language {
    const char* locale; ///< Whose capitals are its own: a Turkish "i" has a dot, a Greek capital no accent.
    std::string_view acting; ///< Parted by commas, like the next.
    std::string_view agreeing; ///< Harmless where it is about cookies.
};

enum class LabelMeaning { acting, agreeing };

/// Immutable; any thread.
class LanguageMatcher {
public:
    LanguageMatcher(std::span<const Language> languages, WordMatcher::Bounds bounds);

    /// Acting, where it says both.
    std::optional<LabelMeaning> meaningOf(const JudgedText& label) const;

private:
    struct Words {
        std::vector<std::string> all; ///< That act, and behind them those that agree.
        std::size_t acting = 0; ///< How many.
    };

    LanguageMatcher(const Words& words, WordMatcher::Bounds bounds);
    static Words wordsOf(std::span<const Language> languages);

    std::size_t m_acting;
    WordMatcher m_matcher;
};

} // namespace quorvell
