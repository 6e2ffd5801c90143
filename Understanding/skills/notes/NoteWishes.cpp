// SPDX-License-Identifier: MIT
#include "Understanding/skills/notes/NoteWishes.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/notes/NoteCalls.h"
#include "Understanding/skills/notes/NoteIntent.h"
#include "Understanding/words/RequestText.h"

#include <utility>

namespace quorvell {

namespace {

using Found = std::optional<Request>;

constexpr const char* cannotChange = "I can't change a note that is there.";

/// A note is offered, not made: nobody asked for one.
Request offeringNote(const std::string& reply, const std::string& text)
{
    return {.answer = [reply, text](RequestMemory memory, const RuleSurroundings& around) {
        const auto call = NoteCalls{around}.keep(NoteIntent::titleFor(text), RequestText::written(text));
        const auto* keeping = std::get_if<ToolRequest>(&call);
        if (!keeping)
            return ToolResults::say(reply, std::move(memory));
        return RuleStep::asking({.kind = &ToolResults::confirmation,
                                    .question = reply,
                                    .tool = keeping->name,
                                    .arguments = keeping->arguments},
            std::move(memory));
    }};
}

/// "Add to my wifi note that the router is in the hall", "rename the wifi note".
Found changing(const std::string& core)
{
    static const Pattern addedBefore(
        "^(?:add|append|put|write|attach|insert) (?!(?:it|that|this|them)\\b)(.+?) (?:to|in|into|onto|on) "
        "(?:my|the|that|this|our) "
        "(?:(?:(?!grocery|shopping)[\\w'’-]+ ){1,3}note|note (?:about|on|called|for|with|of) .+)$",
        Pattern::caseless);
    static const Pattern addedBehind("^(?:add|append|write|attach) (?:to|in|into|onto|on) (?:my|the|that|this|our) "
                                     "(?:[\\w'’-]+ ){0,3}note(?: (?:about|on) [\\w'’-]+)?(?: that|:|,| saying)? (.+)$",
        Pattern::caseless);
    static const Pattern change(
        "^(?:edit|update|change|modify|correct|amend|rename|rewrite|replace)\\b(?: \\S+){0,6} notes?\\b"
        "(?!.*\\b(?:reminders?|events?|meetings?|calendar|lists?|alarms?)\\b)",
        Pattern::caseless);
    auto match = addedBehind.find(core);
    if (!match)
        match = addedBefore.find(core);
    if (match)
        return offeringNote(
            std::string(cannotChange) + " Should I make a new one: " + match->texts[0] + "?", match->texts[0]);
    if (!change.find(core))
        return std::nullopt;
    return Request{.answer = [](RequestMemory memory, const RuleSurroundings&) {
        return ToolResults::say(
            std::string(cannotChange) + " I can read it, delete it, or make a new one.", std::move(memory));
    }};
}

/// "Forget the wifi password" is no wish to hear it.
Found forgetting(const std::string& core)
{
    static const Pattern form(
        "^(?:forget|erase|delete|remove) (?:about )?(?:the|my|our) ((?:[\\w'’-]+ ){0,3}(?:password|passcode"
        "|code|pin|combination|phone number|locker number|account number|reference))$",
        Pattern::caseless);
    const auto match = form.find(core);
    if (!match)
        return std::nullopt;
    return Request{.answer = [topic = match->texts[0]](RequestMemory memory, const RuleSurroundings& around) {
        memory.purpose = RequestMemory::SearchPurpose::remove;
        return RuleStep{NoteCalls{around}.find(topic, 0), std::move(memory)};
    }};
}

/// "I parked on the roof" will be asked for later.
Found placing(const std::string& core)
{
    static const Pattern form(
        "^(?:i|we)(?: have|['’]ve)?(?: just)? (?:(?:parked|hid|stored)\\b.*|left (?:the|my|our) .+) (?:on|in|at"
        "|under|behind|near|next to|by|with|level|opposite|outside|inside|between) \\S.*$",
        Pattern::caseless);
    // "The wifi password is now hawk9"
    static const Pattern news(
        "^(?:the|my|our)(?: [\\w'’-]+){0,3} (?:password|passcode|code|pin|combination|number|address) (?:is(?: "
        "now)?|has changed to|changed "
        "to) (?!(?:wrong|right|correct|missing|gone|on|in|not)\\b)\\S+(?: \\S+){0,3}$",
        Pattern::caseless);
    return form.find(core) || news.find(core) ? Found(offeringNote("Should I make a note of that?", core))
                                              : std::nullopt;
}

/// "Diary entry: had a good day"
Found journal(const std::string& core)
{
    static const Pattern form("^(?:dear diary|(?:diary|journal)(?: entry)?)[:,] ?(.+)$", Pattern::caseless);
    const auto match = form.find(core);
    if (!match)
        return std::nullopt;
    return Request{.answer = [text = match->texts[0]](RequestMemory memory, const RuleSurroundings& around) {
        return RuleStep{
            NoteCalls{around}.keep(NoteIntent::titleFor(text), RequestText::written(text)), std::move(memory)};
    }};
}

} // namespace

std::optional<Request> NoteWishes::read(const std::string& core, const RuleSurroundings&)
{
    constexpr std::size_t longest = 200; ///< Bytes; longer words tell a story.
    if (core.size() > longest)
        return std::nullopt;
    for (const auto reader : {changing, forgetting, placing, journal}) {
        if (auto request = reader(core))
            return request;
    }
    return std::nullopt;
}

} // namespace quorvell
