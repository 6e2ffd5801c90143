// SPDX-License-Identifier: MIT
// Catches instructions that lack a section, say what a flag turned off, or swallow a name.
#include "QuorvellCore/live/prompt/QuorvellPrompt.h"

#include "TemporaryFolder.h"

#include <gtest/gtest.h>

#include <tuple>

namespace quorvell {

namespace {

using Entry = QuorvellPrompt::Entry;
using Reply = QuorvellPrompt::Reply;

std::vector<std::string> headings(const std::string& text)
{
    std::vector<std::string> found;
    for (std::size_t at = 0; at != std::string::npos; at = text.find("\n# ", at)) {
        at += text[at] == '\n' ? 3 : 2;
        found.push_back(text.substr(at, text.find('\n', at) - at));
    }
    return found;
}

PromptOptions everything()
{
    PromptOptions options;
    options.userName = "Asha";
    options.tools = {.tiered = true, .webLookup = true, .connectedApps = true, .nextStep = true};
    options.whereAndWhen = "Saturday 21 November 2026, 15:00, Berlin.";
    return options;
}

} // namespace

TEST(QuorvellPrompt, appEventsToTheLetter)
{
    std::string events;
    for (const std::string& event :
        {QuorvellPrompt::greetingEvent("Asha", "Firefox"), QuorvellPrompt::liveGreeting("", "Firefox"),
            QuorvellPrompt::missedRequest("turn it up"), QuorvellPrompt::heardWhileResting("hello")})
        events += event + "\n";
    EXPECT_EQ(events, test::readText(QUORVELL_FIXTURES "/live/appEvents.txt"));
    EXPECT_TRUE(QuorvellPrompt::greetingEvent("", "x").starts_with("[Quorvell app event] They just called you over. "));
}

TEST(QuorvellPrompt, typedMessagesCarryTheirNotes)
{
    const std::tuple<Entry, Reply, const char*> rows[] = {
        {Entry::typed, Reply::spoken, "[They typed] hi"},
        {Entry::typed, Reply::shown, "[They typed] (your reply is shown as text, not spoken) hi"},
        {Entry::dictated, Reply::spoken,
            "[They typed] (said aloud and written down by speech recognition, so a word may be misheard) hi"},
        {Entry::dictated, Reply::shown,
            "[They typed] (said aloud and written down by speech recognition, so a word may be misheard; your reply is "
            "shown as text, not spoken) hi"},
    };
    for (const auto& [entry, reply, text] : rows)
        EXPECT_EQ(QuorvellPrompt::typedMessage("hi", entry, reply), text);
}

TEST(QuorvellPrompt, sectionsForEachModel)
{
    using Strings = std::vector<std::string>;
    const Strings doing = {"How you help with a task", "Guiding, Auto or doing", "Working the computer well",
        "Longer tasks", "Local task execution", "Going fast", "The next click, in the same call", "Your notebook",
        "Looking things up", "Keeping Asha safe", "When Asha is stuck"};
    const auto with = [&](Strings before, const Strings& after) {
        before.insert(before.end(), doing.begin(), doing.end());
        before.insert(before.end(), after.begin(), after.end());
        return before;
    };
    PromptOptions options = everything();
    EXPECT_EQ(headings(QuorvellPrompt::systemInstruction(options)),
        (Strings{"Who you are", "Who you're helping", "How you sound", "Your helper", "How you help with a task",
            "Guiding, Auto or doing", "Keeping Asha safe", "When Asha is stuck", "Where and when"}));
    EXPECT_EQ(headings(QuorvellPrompt::liveBackendInstructions(options)),
        with({"Your part", "Who you're helping"}, {"What you return", "Where and when"}));
    EXPECT_EQ(headings(QuorvellPrompt::textBackendInstructions(options)),
        with({"Who you are", "Who you're helping", "How you sound"}, {"Where and when"}));
    options.toolHolder = PromptOptions::ToolHolder::voice;
    EXPECT_EQ(headings(QuorvellPrompt::systemInstruction(options)),
        with({"Who you are", "Who you're helping", "How you sound"}, {"Where and when"}));
}

TEST(QuorvellPrompt, sectionsFollowTheFlags)
{
    const struct Row {
        const char* heading;
        void (*turnOff)(PromptOptions&);
    } rows[] = {
        {"# Local task execution", [](PromptOptions& options) { options.tools.tiered = false; }},
        {"# The next click, in the same call", [](PromptOptions& options) { options.tools.nextStep = false; }},
        {"# Where and when", [](PromptOptions& options) { options.whereAndWhen = " "; }},
        {"`connect_app`", [](PromptOptions& options) { options.tools.connectedApps = false; }},
        {"`look_up`", [](PromptOptions& options) { options.tools.webLookup = false; }},
        {"# Looking things up",
            [](PromptOptions& options) { options.tools.webLookup = options.tools.connectedApps = false; }},
    };
    for (const Row& row : rows) {
        PromptOptions options = everything();
        EXPECT_NE(QuorvellPrompt::liveBackendInstructions(options).find(row.heading), std::string::npos) << row.heading;
        row.turnOff(options);
        EXPECT_EQ(QuorvellPrompt::liveBackendInstructions(options).find(row.heading), std::string::npos) << row.heading;
    }
}

TEST(QuorvellPrompt, namesAreFilledInAndStayNames)
{
    PromptOptions options = everything();
    options.userName = " ";
    const std::string nameless = QuorvellPrompt::liveBackendInstructions(options);
    EXPECT_TRUE(
        nameless.starts_with("# Your part\n\nYou're the part of Quorvell that sees your friend's screen and uses "
                             "the tools. A separate voice model does the talking"));
    EXPECT_NE(nameless.find("# Keeping your friend safe\n"), std::string::npos);
    EXPECT_NE(nameless.find("After point_at, the app has already said its instruction out loud"), std::string::npos);

    options.userName = "Asha {family}\n# New section";
    options.familyName = "Ben";
    for (const std::string& text : {QuorvellPrompt::systemInstruction(options),
             QuorvellPrompt::liveBackendInstructions(options), QuorvellPrompt::textBackendInstructions(options)}) {
        EXPECT_EQ(text.find("\n# New section"), std::string::npos);
        EXPECT_NE(text.find("# Keeping Asha {family} # New section safe"), std::string::npos) << "one pass only";
        EXPECT_NE(text.find("Ben"), std::string::npos);
        EXPECT_EQ(text.find("{name}"), std::string::npos);
        EXPECT_EQ(text.find("\n\n\n"), std::string::npos);
    }
}

} // namespace quorvell
