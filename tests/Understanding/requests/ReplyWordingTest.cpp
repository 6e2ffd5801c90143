// SPDX-License-Identifier: MIT
// Catches replies that misstate what a tool did.
#include "RuleBench.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(ReplyWording, tellsWhatToolsDid)
{
    checkConversations("replies.txt", withCalendar());
}

TEST(ReplyWording, breaksOffALongNote)
{
    const std::string longNote = R"({"title":"Long","text":")" + std::string(3000, 'a') + " b\"}";
    EXPECT_LT(shown(RequestRules::answerResult({"read_note", "{}"}, longNote, {}, surroundings())).size(), 700u);
}

} // namespace quorvell
