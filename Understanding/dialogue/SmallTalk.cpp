// SPDX-License-Identifier: MIT
#include "Understanding/dialogue/SmallTalk.h"

#include "Understanding/dialogue/PlainReplies.h"
#include "Understanding/words/RequestText.h"

#include <algorithm>
#include <iterator>

namespace quorvell {

namespace {

enum class Topic { greeting, howAreYou, thanks, goodbye, help, whoAreYou, consent, agreement, repeat, ownWords };

struct Row {
    std::string_view phrase; ///< As RequestText::phrase gives it.
    Topic topic;
};

constexpr Row rows[] = {
    {"", Topic::greeting},
    {"hello", Topic::greeting},
    {"quorvell", Topic::greeting},
    {"hello there", Topic::greeting},
    {"hi", Topic::greeting},
    {"hi there", Topic::greeting},
    {"hey", Topic::greeting},
    {"there", Topic::greeting},
    {"dear", Topic::greeting},
    {"my dear", Topic::greeting},
    {"my friend", Topic::greeting},
    {"everybody", Topic::greeting},
    {"everyone", Topic::greeting},
    {"good morning", Topic::greeting},
    {"good afternoon", Topic::greeting},
    {"good evening", Topic::greeting},
    {"are you there", Topic::greeting},
    {"how are you", Topic::howAreYou},
    {"how are you doing", Topic::howAreYou},
    {"how are you today", Topic::howAreYou},
    {"well done", Topic::thanks},
    {"goodbye", Topic::goodbye},
    {"good bye", Topic::goodbye},
    {"bye", Topic::goodbye},
    {"bye bye", Topic::goodbye},
    {"good night", Topic::goodbye},
    {"see you", Topic::goodbye},
    {"see you later", Topic::goodbye},
    {"that is all", Topic::goodbye},
    {"help", Topic::help},
    {"help me", Topic::help},
    {"what can you do", Topic::help},
    {"what can i say", Topic::help},
    {"what can i ask", Topic::help},
    {"what do you do", Topic::help},
    {"how do you work", Topic::help},
    {"who are you", Topic::whoAreYou},
    {"what are you", Topic::whoAreYou},
    {"what is your name", Topic::whoAreYou},
    {"yes", Topic::consent},
    {"yes please", Topic::consent},
    {"yeah", Topic::consent},
    {"yep", Topic::consent},
    {"sure", Topic::consent},
    {"go ahead", Topic::consent},
    {"okay", Topic::agreement},
    {"ok", Topic::agreement},
    {"great", Topic::agreement},
    {"good", Topic::agreement},
    {"perfect", Topic::agreement},
    {"sounds good", Topic::agreement},
    {"that is right", Topic::agreement},
    {"that is correct", Topic::agreement},
    {"correct", Topic::agreement},
    {"right", Topic::agreement},
    {"then", Topic::agreement},
    {"alright", Topic::agreement},
    {"all right", Topic::agreement},
    {"fine", Topic::agreement},
    {"that is fine", Topic::agreement},
    {"very well", Topic::agreement},
    {"fair enough", Topic::agreement},
    {"i see", Topic::agreement},
    {"repeat that", Topic::repeat},
    {"say that again", Topic::repeat},
    {"say it again", Topic::repeat},
    {"repeat it", Topic::repeat},
    {"what did you say", Topic::repeat},
    {"pardon", Topic::repeat},
    {"sorry", Topic::repeat},
    {"again", Topic::repeat},
    {"come again", Topic::repeat},
    {"what was that", Topic::repeat},
    {"what", Topic::repeat},
    {"repeat", Topic::repeat},
    {"excuse me", Topic::repeat},
    {"i did not catch that", Topic::repeat},
    {"i did not hear that", Topic::repeat},
    {"what did i just say", Topic::ownWords},
    {"what did i say", Topic::ownWords},
};

constexpr std::string_view cancelPhrases[] = {"never mind", "nevermind", "cancel", "cancel that", "cancel it", "stop",
    "stop it", "stop that", "forget it", "forget about it", "forget that", "leave it", "skip it", "skip that",
    "no thanks", "no thank you", "do not bother", "be quiet", "quiet", "nothing", "no", "no no", "no no no", "nope",
    "neither", "none", "neither of them", "none of them", "not that", "rather not", "better not", "i would rather not",
    "not really"};

constexpr std::string_view undoPhrases[] = {"cancel that", "cancel it", "undo", "undo that", "undo it", "delete that",
    "delete it", "remove that", "remove it", "scrap that", "scratch that", "take that back", "get rid of it",
    "get rid of that", "forget it", "forget that", "cancel that one", "delete that one"};

constexpr std::string_view whatToDo = "What can I do for you?"; ///< No question that a "yes" answers.

/// What thanks are made of; one of the first few must be there.
constexpr std::string_view thanksWords[] = {"thanks", "thank", "cheers", "ta", "you", "very", "so", "much", "a", "lot",
    "million", "many", "great", "lovely", "perfect", "brilliant", "good", "wonderful", "that", "is", "was", "its", "it",
    "helpful", "kind", "of", "for", "your", "help", "dear", "oh", "well", "all", "the", "again", "helping", "me", "out",
    "everything", "work", "job", "nice", "really", "i", "we", "appreciate", "assistance", "doing", "this"};
constexpr std::size_t thanksThemselves = 4;

bool isThanks(std::string_view phrase)
{
    bool hasThanks = false;
    for (std::size_t start = 0; start < phrase.size();) {
        const std::size_t end = std::min(phrase.find(' ', start), phrase.size());
        const auto word = std::ranges::find(thanksWords, phrase.substr(start, end - start));
        if (word == std::end(thanksWords))
            return false;
        hasThanks = hasThanks || word < std::begin(thanksWords) + thanksThemselves;
        start = end + 1;
    }
    return hasThanks;
}

std::string answerTo(Topic topic, std::string_view lastReply, const SkillSummary& skills)
{
    switch (topic) {
    case Topic::greeting:
        return PlainReplies::greeting({});
    case Topic::howAreYou:
        return "I am fine, thank you. " + std::string(whatToDo);
    case Topic::thanks:
        return "You are welcome.";
    case Topic::goodbye:
        return "Goodbye.";
    case Topic::help:
        return skills.help;
    case Topic::whoAreYou:
        return "I am Quorvell, working on this computer alone. " + skills.abilities;
    case Topic::consent: // To what? "All right" would read as if something was done.
        return lastReply.ends_with(whatToDo) ? "Please say what I should do. So far nothing is changed."
            : lastReply.ends_with('?')       ? "Please say a little more."
                                             : "I have not asked anything just now, so nothing is changed.";
    case Topic::agreement:
        return "All right.";
    case Topic::repeat:
        return lastReply.empty() ? "I have not said anything yet." : std::string(lastReply);
    case Topic::ownWords:
        return "I do not keep what you say, only what you ask me to keep.";
    }
    return {};
}

} // namespace

std::optional<std::string> SmallTalk::answer(
    std::string_view core, std::string_view lastReply, const SkillSummary& skills)
{
    const std::string phrase = RequestText::phrase(core);
    const auto row = std::ranges::find(rows, phrase, &Row::phrase);
    if (row == std::end(rows))
        return isThanks(phrase) ? std::optional(answerTo(Topic::thanks, lastReply, skills)) : std::nullopt;
    return answerTo(row->topic, lastReply, skills);
}

bool SmallTalk::isAgreement(std::string_view core)
{
    const auto row = std::ranges::find(rows, RequestText::phrase(core), &Row::phrase);
    return row != std::end(rows) && (row->topic == Topic::consent || row->topic == Topic::agreement);
}

bool SmallTalk::isCancel(std::string_view core)
{
    return std::ranges::find(cancelPhrases, RequestText::phrase(core)) != std::end(cancelPhrases);
}

bool SmallTalk::isUndo(std::string_view core)
{
    return std::ranges::find(undoPhrases, RequestText::phrase(core)) != std::end(undoPhrases);
}

} // namespace quorvell
