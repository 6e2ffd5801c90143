// SPDX-License-Identifier: MIT
// Catches a reminder that goes on though it was cancelled, or goes though nobody agreed, and words of a time that get
// lost between two turns.
#include "RuleBench.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(ReminderTalk, doesWhatWasAgreedAndKeepsWhatWasSaid)
{
    checkConversations("talk.txt", withCalendar(), {{"=nothingDue", nothingDue}});
}

} // namespace quorvell
