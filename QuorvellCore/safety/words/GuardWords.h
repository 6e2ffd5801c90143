// SPDX-License-Identifier: MIT
// The guard's tables of words, English only.
#pragma once

#include "QuorvellCore/safety/words/WordMatcher.h"

#include <array>
#include <cstddef>
#include <span>
#include <string_view>

namespace quorvell {

/// Each matcher is compiled when it is first asked for and never changes.
struct GuardWords {
    static std::span<const std::string_view> wordEndings();

    /// What nobody but the user does, in the order in which it is looked for.
    static const WordMatcher& forbidden();
    /// What such a word's button can do, as it is spoken: "spend or move money".
    static std::string_view danger(std::size_t forbiddenWord);
    /// Programs that let others in, or that install.
    static const WordMatcher& forbiddenPrograms();

    static const WordMatcher& cookies();
    static const WordMatcher& confirming();
    static const WordMatcher& privateFields();
    static const WordMatcher& searchVetoes();
    static const WordMatcher& messages();
    /// In the title of a settings window: what only the user changes.
    static const WordMatcher& guardedSettings();

    static bool isAddressBarName(std::string_view lower);
    static bool isMessagingApp(std::string_view lower);
};

} // namespace quorvell
