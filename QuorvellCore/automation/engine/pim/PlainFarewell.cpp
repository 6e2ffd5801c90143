// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/engine/pim/PlainFarewell.h"

#include "QuorvellCore/text/Apostrophes.h"
#include "QuorvellCore/text/TextMatch.h"

#include <string>
#include <vector>

namespace quorvell {

namespace {

constexpr std::string_view farewells[] = {"goodbye", "good bye", "bye", "bye bye", "byebye", "good night", "goodnight",
    "farewell", "see you", "see ya", "see you later", "see you soon", "see you tomorrow", "see you next time",
    "talk to you later", "talk to you soon", "talk to you tomorrow", "speak to you later", "until next time",
    "until tomorrow", "take care", "have a nice day", "have a good day", "have a nice evening", "have a good evening",
    "you can go", "you may go", "you can leave", "go away", "leave me alone", "stop listening", "stop listening to me",
    "stop helping", "stop helping me", "end the conversation", "end this conversation", "end our conversation",
    "end the session", "end this session", "that's all for now", "that's all for today", "that is all for now",
    "that is all for today", "that will be all", "that'll be all", "we're done for now", "we're done for today",
    "i don't need anything else", "i don't need any more help", "i don't need you any more", "i don't need you anymore",
    "no more help needed"};

/// What may stand around a farewell and is none by itself.
constexpr std::string_view company[] = {"ok", "okay", "alright", "all right", "right", "well", "so", "oh", "and", "no",
    "great", "perfect", "good", "fine", "cool", "nice", "thanks", "thank you", "many thanks", "thanks a lot",
    "thank you very much", "thank you so much", "for your help", "for the help", "for everything", "quorvell", "then",
    "now", "for now", "for today", "please", "everyone", "that's it", "that's all", "that is all", "that was all",
    "nothing else", "i'm done", "we're done", "i have to go", "i need to go", "i've got to go"};

bool standsAt(std::string_view phrase, std::string_view words, std::size_t position)
{
    const std::string_view rest = words.substr(position);
    return rest.starts_with(phrase) && (rest.size() == phrase.size() || rest[phrase.size()] == ' ');
}

} // namespace

bool PlainFarewell::matches(std::string_view text)
{
    if (text.size() > longest || text.find('?') != std::string_view::npos)
        return false;
    const std::string words = TextMatch::normalized(withPlainApostrophes(std::string(text)));
    enum : unsigned char { reached = 1, saidFarewell = 2 };
    // By the byte at which the next word begins: how the words before can be parted into phrases.
    std::vector<unsigned char> ways(words.size() + 2, 0);
    ways[0] = reached;
    for (std::size_t position = 0; position < words.size(); ++position) {
        if (!ways[position])
            continue;
        for (const std::string_view phrase : company) {
            if (standsAt(phrase, words, position))
                ways[position + phrase.size() + 1] |= ways[position];
        }
        for (const std::string_view phrase : farewells) {
            if (standsAt(phrase, words, position))
                ways[position + phrase.size() + 1] |= saidFarewell;
        }
    }
    return ways[words.size() + 1] & saidFarewell;
}

} // namespace quorvell
