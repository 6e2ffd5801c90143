// SPDX-License-Identifier: MIT
// Catches turns that are lost or doubled in what a typed question carries along.
#include "Quorvell/connections/responses/ConversationItems.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(ConversationItems, stayBoundedAndWhole)
{
    ConversationItems items;
    for (int turn = 0; turn < 500; ++turn) {
        items.add(openai_item::Message{"user", std::to_string(turn), {{Bytes(1000)}}});
        items.add(openai_item::FunctionCall{"call", "look_up", "{}"});
        items.add(openai_item::FunctionOutput{"call", std::string(turn % 50 == 0 ? 300'000 : 10, 'x')});
    }
    EXPECT_LE(items.all().size(), ConversationItems::mostItems);
    EXPECT_EQ(std::get<openai_item::Message>(items.all().front()).role, "user") << "no result without its call";
    EXPECT_EQ(std::get<openai_item::Message>(items.all()[items.all().size() - 3]).text, "499");
    std::size_t pictures = 0;
    for (const OpenAIItem& item : items.all())
        if (const auto* message = std::get_if<openai_item::Message>(&item))
            pictures += message->images.size();
    EXPECT_EQ(pictures, ConversationItems::mostPictures);
    items.add(openai_item::Message{"user", std::string(ConversationItems::mostBytes, 'x')});
    EXPECT_EQ(items.all().size(), 1U);
}

} // namespace quorvell
