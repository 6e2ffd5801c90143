// SPDX-License-Identifier: MIT
// What a reminder phrase asks to be reminded of, once its time is taken out.
#pragma once

#include "QuorvellCore/text/Pattern.h"

#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// In order, without overlaps.
std::vector<TextRange> mergedRanges(std::vector<TextRange> ranges);

/// The words at `ranges` (in order, without overlaps), joined with a space.
std::string wordsAt(std::string_view text, const std::vector<TextRange>& ranges);

/// Without "Hey Quorvell, please remind me to" at its beginning.
std::string withoutLeadIn(std::string text);

/// What is left of `text` to be reminded of: without the time words at `ranges`, without "remind me to" and without
/// the prepositions that the time words leave behind.
std::string phraseTask(std::string_view text, const std::vector<TextRange>& ranges);

} // namespace quorvell
