// SPDX-License-Identifier: MIT
// Catches a reminder that goes on though it was cancelled, and words of a time that get lost between two turns.
#include "RuleBench.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace quorvell {

namespace {

/// One conversation: what is said or what a tool answers, and what follows.
struct Turn {
    const char* heard; ///< A result begins with "{".
    const char* expected;
};

void checkConversation(std::initializer_list<Turn> turns)
{
    RequestMemory memory;
    ToolRequest call;
    for (const Turn& turn : turns) {
        SCOPED_TRACE(turn.heard);
        const RuleStep step = *turn.heard == '{' ? RequestRules::answerResult(call, turn.heard, memory, surroundings())
                                                 : RequestRules::answerWords(turn.heard, memory, surroundings());
        EXPECT_EQ(shown(step), turn.expected);
        memory = step.memory;
        if (const auto* request = std::get_if<ToolRequest>(&step.answer))
            call = *request;
    }
}

constexpr const char* pillSeries =
    R"({"status":"which_occurrences","id":"p","task":"Take my pill","when":"Sunday 22 November at 9 AM","repeat":"daily","repeat_words":"Every day"})";
constexpr const char* pillQuestion = "I remind you to take my pill every day. Only the next one, or all of them?";

} // namespace

TEST(ReminderTalk, endsWhatRepeatsOnlyWhereThatIsSaid)
{
    for (const char* words : {"cancel my pill reminder", "delete the pill reminder", "stop reminding me about my pill",
             "I no longer need the pill reminder"})
        checkConversation({{words, R"(set_reminder {"task":"pill","cancel":true})"}, {pillSeries, pillQuestion}});
    checkConversation({{"every day at 9 am take my pill",
                           R"(set_reminder {"text":"remind me every day at 9 am take my pill"})"},
        {R"({"status":"set","id":"p","task":"Take my pill","when":"Sunday 22 November at 9 AM","repeat_words":"Every day"})",
            "I will remind you to take my pill every day, starting on Sunday the 22nd of November at 9 AM."},
        {"cancel that", R"(set_reminder {"cancel":true,"id":"p"})"}, {pillSeries, pillQuestion},
        {"all of them", R"(set_reminder {"cancel":true,"id":"p","series":true})"},
        {R"({"status":"done","id":"p","task":"Take my pill","ended":true})",
            "All right, I will not remind you to take my pill any more. The note stays in your notebook."}});
    checkConversation({{"cancel my pill reminder", R"(set_reminder {"task":"pill","cancel":true})"},
        {pillSeries, pillQuestion}, {"only the next one", R"(set_reminder {"cancel":true,"id":"p","series":false})"}});
    checkConversation({{"I took my pill", R"(set_reminder {"task":"pill","done":true})"}});
    checkConversation({{"delete all my reminders", R"(set_reminder {"list":true})"},
        {R"({"status":"reminders","reminders":[{"id":"a","task":"Rest","date":"2028-03-20 17:00"},{"id":"b","task":"Eat"}]})",
            "I can only take away one at a time. You have 2 reminders. Rest, on Monday the 20th of March 2028 at 5 PM. "
            "Eat. "
            "Which one should go?"},
        {"the second one", R"(set_reminder {"cancel":true,"id":"b"})"}});
}

TEST(ReminderTalk, keepsWhatWasSaidOfATime)
{
    checkConversation(
        {{"remind me to call mum tomorow at 5 pm", R"(set_reminder {"text":"remind me to call mum tomorow at 5 pm"})"},
            {R"({"status":"needs_time","task":"Call mum","unclear":"tomorow","understood":{"clock":"at 5 pm"}})",
                "I am not sure what you mean by \"tomorow\". On which day should I remind you to call mum at 5 PM?"},
            {"tomorrow", R"(set_reminder {"task":"Call mum","text":"tomorrow at 5 pm"})"}});
    checkConversation({{"remind me to eat at 5 pm or 6 pm on thursday",
                           R"(set_reminder {"text":"remind me to eat at 5 pm or 6 pm on thursday"})"},
        {R"({"status":"needs_time","task":"Eat","unclear":"or 6 pm","understood":{"day":"2026-11-26"}})",
            "I am not sure what you mean by \"or 6 pm\". At what time should I remind you to eat on Thursday the 26th "
            "of "
            "November?"},
        {"6 pm", R"(set_reminder {"task":"Eat","text":"6 pm on 2026-11-26"})"}});
    checkConversation(
        {{"set a monthly reminder for paying rent", R"(set_reminder {"text":"remind me paying rent monthly"})"},
            {R"({"status":"needs_time","task":"Paying rent","understood":{"rule":"every month"}})",
                "From which day on should I remind you about paying rent every month?"},
            {"on the 1st", R"(set_reminder {"task":"Paying rent","text":"on the 1st every month"})"}});
    // By its name, too, only the day changes.
    checkConversation({{"move the vet reminder to the 31st", R"(set_reminder {"list":true})"},
        {R"({"status":"reminders","reminders":[{"id":"v","task":"Ring the vet","date":"2026-12-09 18:00"},{"id":"e","task":"Eat"}]})",
            R"(set_reminder {"later":"2026-12-31 18:00","id":"v"})"}});
    checkConversation({{"remind me tomorrow", R"(set_reminder {"later":"tomorrow"})"},
        {R"({"error":"Nothing was changed: no reminder is due. Call set_reminder with list and ask which."})",
            R"(set_reminder {"text":"remind me tomorrow"})"}});
}

} // namespace quorvell
