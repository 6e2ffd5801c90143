// SPDX-License-Identifier: MIT
// Catches lists that are changed without a wish for it, and requests for lists taken for others.
#include "RuleBench.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(ListRules, readsWhatIsAskedOfLists)
{
    checkConversations("listRequests.txt", surroundings());
}

TEST(ListRules, keepsInMindWhichListIsSpokenOf)
{
    std::string items;
    for (int item = 1; item <= 14; ++item)
        items += (items.empty() ? "" : ",") + (R"({"text":"a)" + std::to_string(item) + "\"}");
    checkConversations("listTalk.txt", withCalendar(),
        {{"=long",
            R"({"status":"list","id":"b1","title":"Book list","name":"book list","open":14,"ticked":0,"items":[)"
                + items + "]}"}});
}

} // namespace quorvell
