// SPDX-License-Identifier: MIT
#include "Quorvell/session/turn/SessionEvents.h"

#include "QuorvellCore/live/prompt/QuorvellPrompt.h"
#include "QuorvellCore/text/Characters.h"

#include <nlohmann/json.hpp>

namespace quorvell {

namespace {

std::string event(const std::string& text)
{
    return std::string(QuorvellPrompt::eventPrefix) + " " + text;
}

std::string inQuotes(std::string_view text)
{
    return "“" + firstCharacters(text, SessionEvents::mostQuoted) + "”";
}

std::string jsonText(const Json& json)
{
    return firstCharacters(dumpJson(json), SessionEvents::mostQuoted);
}

/// With its arguments, since one tool may serve several requests.
std::string callText(const LiveFunctionCall& call)
{
    return call.name + " " + jsonText(call.args);
}

std::string resultText(const AnsweredCall& answered)
{
    return callText(answered.call) + " answered " + jsonText(answered.result) + ". ";
}

std::string unfinished(const SessionEvents::Unfinished& turn, const std::string& why)
{
    if (turn.heardReply.empty() && turn.done.empty() && turn.running.empty())
        return QuorvellPrompt::missedRequest(firstCharacters(turn.requests, SessionEvents::mostQuoted));
    std::string text = "They said: " + inQuotes(turn.requests) + ". " + why + " ";
    for (const AnsweredCall& answered : turn.done)
        text += resultText(answered);
    for (const LiveFunctionCall& call : turn.running)
        text += callText(call) + " is still running; its result will follow. ";
    if (!turn.heardReply.empty())
        text += "Of your answer they heard: " + inQuotes(turn.heardReply) + ". ";
    return event(text
        + "Don't run any of this again and don't mention the connection; do what is still missing, and tell them in a "
          "few words what came of it.");
}

} // namespace

std::string SessionEvents::handover(const Unfinished& turn)
{
    return unfinished(turn, "The connection was renewed before that was finished.");
}

std::string SessionEvents::notTakenUp(const Unfinished& turn)
{
    return unfinished(turn, "The last of it may not have been taken up.");
}

std::string SessionEvents::lateResult(const AnsweredCall& answered)
{
    return event("A call from before the connection was renewed has finished: " + resultText(answered)
        + "Don't call it again; tell them in a few words what came of it.");
}

std::string SessionEvents::turnsMeanwhile(const std::vector<LiveHistoryEntry>& turns)
{
    std::string text = "This was said meanwhile, and is settled.";
    for (const LiveHistoryEntry& turn : turns)
        text += (turn.role == "assistant" ? " You: " : " They: ") + inQuotes(turn.text);
    return event(text);
}

std::string SessionEvents::helpModeSwitched(HelpMode mode)
{
    return event("They have switched to " + std::string(nameOf(mode)) + " mode. Keep to it from now on.");
}

std::string SessionEvents::announcement(const std::vector<std::string>& sentences)
{
    std::string all;
    for (const std::string& sentence : sentences)
        all += (all.empty() ? "" : " ") + sentence;
    // A quotation within it would end it early.
    for (const std::string_view mark : {"“", "”"})
        for (std::size_t at = all.find(mark); at != std::string::npos; at = all.find(mark, at))
            all.replace(at, mark.size(), "'");
    return event("This has just come due. Tell them: " + inQuotes(all)
        + ". Say it now, in one short sentence, and take up what they answer.");
}

std::string SessionEvents::stillWorking()
{
    return event("What they asked for is still being worked on. Tell them so in three or four words, then wait.");
}

} // namespace quorvell
