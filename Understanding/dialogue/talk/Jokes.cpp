// SPDX-License-Identifier: MIT
#include "Understanding/dialogue/talk/Jokes.h"

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

constexpr auto jokes = std::to_array<std::string_view>({
    "I once wrote a note about where I keep my notes. I am still looking for it.",
    "A reminder walks into a library. It comes back every Friday.",
    "I asked a timer for a minute of its time. It gave me exactly sixty seconds.",
    "The shopping list said to the fridge: you look empty, and I have it in writing.",
    "My favourite day is tomorrow. Everybody puts so much into it.",
    "I tried to forget something once. At five o'clock I reminded myself.",
    "Two alarms meet at night. Says one: don't wake me.",
    "Knock, knock. Who is there? A reminder. A reminder who? You asked me not to forget, and now you have.",
});

} // namespace

std::string_view Jokes::at(std::size_t number)
{
    return jokes[number % jokes.size()];
}

bool Jokes::isOne(std::string_view reply)
{
    return std::ranges::find(jokes, reply) != jokes.end();
}

} // namespace quorvell
