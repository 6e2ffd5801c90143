// SPDX-License-Identifier: MIT
// Catches requests that mean something else once they are dressed as people dress them.
#include "RuleBench.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>

namespace quorvell {

namespace {

constexpr auto wishes = {"add milk to my shopping list", "put bread and butter on the grocery list",
    "remove eggs from my grocery list", "create a packing list", "put lunch with Ana in my calendar on friday at 1 pm",
    "schedule a meeting with Bob tomorrow at 4 pm", "cancel my dentist appointment",
    "move lunch with Ana to friday at 2 pm", "remind me tomorrow at 5 pm to call mum",
    "remind me to pay the rent on monday at 9 am", "set an alarm for 7 am tomorrow", "set a timer for 10 minutes",
    "show me my shopping list", "turn off my alarm"};
constexpr auto questions = {"what's on my calendar tomorrow", "what is on my shopping list", "when is my next meeting",
    "do I have anything on friday", "what time is it in Tokyo", "how many alarms do I have"};

/// "*" stands for the request.
constexpr auto onAll = {"alexa *", "Alexa, *", "hey siri *", "ok google, *", "hey google *", "Jarvis, *", "computer, *",
    "bixby *", "olly *", "yo *", "bro, *", "hey buddy, *", "dear assistant, *", "hey mate *", "hi, *", "um, *",
    "ok so *", "*, mate", "*, alexa", "*!!!", "* 🙏", "* :)", "* thx", "*, thanks in advance", "* pls", "pls *", "* ...",
    "* -", "\"*", "*, cheers mate"};
constexpr auto onWishes = {"kindly *", "could u *", "can ya *", "can you pls *", "would u kindly *",
    "I'd like you to *", "i want u to *", "i need you to *", "go ahead and *", "just *", "quickly *", "make sure to *",
    "* asap", "* right away", "* if you can", "* when you get a chance", "*, ok?", "* will you?", "*, will ya",
    "* do the needful", "any chance you could *", "are you able to *", "it would be great if you could *",
    "*, that would be great", "* if it's not too much trouble", "* and let me know when it's done",
    "do me a favour and *", "i was wondering if you could *", "hey can you please * thank you",
    "alexa could u * asap thanks!!", "hi there can you please be kind to *", "kindly do the needful and *",
    "I am needing you to *", "I want that you *", "first *", "do this: *", "my request is to *", "why don't you *",
    "can u plz help me *", "go and *", "*. Can you do that for me?", "* (please)", "*. You are great", "* !!1",
    "* please and thank you"};

void checkDressed(std::initializer_list<const char*> requests, std::initializer_list<const char*> dressings)
{
    for (const std::string plain : requests) {
        const std::string meant = shown(RequestRules::answerWords(plain, {}, withCalendar()));
        for (std::string dressed : dressings) {
            dressed.replace(dressed.find('*'), 1, plain);
            EXPECT_EQ(shown(RequestRules::answerWords(dressed, {}, withCalendar())), meant) << dressed;
        }
    }
}

} // namespace

TEST(DressedRequests, meanWhatThePlainOnesMean)
{
    checkDressed(wishes, onAll);
    checkDressed(wishes, onWishes);
    checkDressed(questions, onAll);
}

/// The second of two wishes in one breath is neither lost nor part of the first.
TEST(DressedRequests, mayBeTwoInOneBreath)
{
    checkConversations("twoWishes.txt", withCalendar());
}

} // namespace quorvell
