// SPDX-License-Identifier: MIT
// What the guard looks for in a text besides words: prices, names of sites, long numbers. Read by hand, for a pattern
// that gives up on a text of a megabyte would let it pass.
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

/// One of $ £ € ₹ ¥ before a digit or a digit before usd, eur, gbp or inr, at most one white space between them.
bool hasPrice(std::string_view lower);

/// "example.com" and the like, of the endings that most sites have.
bool hasSiteName(std::string_view lower);
/// What a label says beside the names of sites in it: "Buy at example.com" says "Buy at ". Case is kept.
std::string withoutSiteNames(std::string_view label);

/// Six or more digits in a row, whether they are written as such or escaped ("%31").
bool hasLongNumber(std::string_view text);

} // namespace quorvell
