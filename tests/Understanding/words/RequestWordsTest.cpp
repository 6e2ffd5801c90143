// SPDX-License-Identifier: MIT
// Catches utterances taken apart at the wrong places.
#include "Understanding/words/RequestWords.h"

#include <gtest/gtest.h>

#include <string>

namespace quorvell {

TEST(RequestWords, takesContractionsApartAndKeepsWhatWasSaid)
{
    const RequestWords words("What’s on, don't say \"Ana's\" lunch at 5 p.m.");
    std::string text;
    for (std::size_t index = 0; index < words.size(); ++index)
        text += std::string(words.at(index)) + (words.endsClause(index) ? "| " : " ");
    EXPECT_EQ(text, "what is on| do not say anas| lunch at 5 p.m ");
    EXPECT_EQ(words.said(6, 99), "Ana's\" lunch at 5 p.m.");
    EXPECT_EQ(RequestWords("").said(), "");
}

} // namespace quorvell
