// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/prompt/QuorvellPrompt.h"

namespace quorvell {

namespace {

std::string nameOrThey(std::string_view userName)
{
    return std::string(userName.empty() ? "They" : userName);
}

std::string event(const std::string& text)
{
    return std::string(QuorvellPrompt::eventPrefix) + " " + text;
}

} // namespace

std::string QuorvellPrompt::greetingEvent(std::string_view userName, std::string_view frontApp)
{
    return event(nameOrThey(userName) + " just called you over. They're looking at " + std::string(frontApp) + ". "
        + "Say hello the way you would if a friend waved you over, and ask what they'd like to do. "
        + "Keep it to one short sentence.");
}

std::string QuorvellPrompt::liveGreeting(std::string_view userName, std::string_view frontApp)
{
    return nameOrThey(userName) + " has just called Quorvell over and is looking at " + std::string(frontApp) + ". "
        + "Say hello warmly and ask what they'd like to do, in one short sentence.";
}

std::string QuorvellPrompt::missedRequest(std::string_view text)
{
    return event("They said: “" + std::string(text) + "”. It wasn't passed on to you, so nothing has "
        + "been done about it yet. Treat it as their request and handle it now, looking at the screen first if it's "
        + "about the computer. If it's already done or needs nothing, say so in a few words.");
}

std::string QuorvellPrompt::heardWhileResting(std::string_view text)
{
    return event("They just said: “" + std::string(text) + "”. (Quorvell was resting while it was quiet, "
        + "and the Mac wrote their words down; they may be slightly off.) Treat it as their request and handle it now, "
        + "out loud, looking at the screen first if it's about the computer. Don't mention resting or reconnecting.");
}

std::string QuorvellPrompt::typedMessage(std::string_view text, Entry entry, Reply reply)
{
    std::string notes;
    if (entry == Entry::dictated)
        notes = "said aloud and written down by speech recognition, so a word may be misheard";
    if (reply == Reply::shown)
        notes += std::string(notes.empty() ? "" : "; ") + "your reply is shown as text, not spoken";
    return "[They typed]" + (notes.empty() ? "" : " (" + notes + ")") + " " + std::string(text);
}

} // namespace quorvell
