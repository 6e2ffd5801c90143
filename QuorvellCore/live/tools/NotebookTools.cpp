// SPDX-License-Identifier: MIT
// The tools of the notebook, the reminders, the calendar and the linked accounts.
#include "QuorvellCore/live/tools/ToolDeclaration.h"
#include "QuorvellCore/live/tools/ToolDeclarations.h"
#include "QuorvellCore/live/tools/ToolSchema.h"

namespace quorvell::tool_declarations {

using namespace tool_schema;

namespace {

constexpr std::string_view moment = "\"2026-11-22 17:00\" in the user's time zone, or \"2026-11-22\" for a whole day.";

constexpr std::string_view item =
    "Its words, or \"#3\" for its place as the list is told, \"#last\" for the last one, \"#all\".";

Json dateText(std::string_view what)
{
    return text(std::string(what) + " " + std::string(moment));
}

Json notes()
{
    return Json::array({
        declaration("keep_note",
            "Keeps a note in the user's notebook, with `text`; or keeps one of their lists (shopping, packing, to do): "
            "a note of check boxes. One call does one thing with one list. Answers with its id once it is safely "
            "stored, and with what was found, missing or unclear; \"which_list\", \"no_list\", \"which_item\" and "
            "\"not_on_list\" mean that nothing was changed: ask the user and call again.",
            {optional("title", text("Of a note: a few words that they would look for.")),
                optional("text", text("The note in their words; Markdown is fine.")),
                optional("kind",
                    choice("note: their own words (default). clip: something copied from the screen or a page.",
                        {"note", "clip"})),
                optional("list", text("The list, as they call it: \"shopping\". Empty for the only one.")),
                optional("id", text("The list's id, instead of `list`.")),
                optional("create", flag("True: makes that list, with what is in `add`.")),
                optional("lists", flag("True: tells which lists there are.")),
                optional("show", flag("True: tells what is on it, open items first.")),
                optional("has", list("Tells whether these are on it.", text("One item."))),
                optional("add", list("Puts these on it; one thing each.", text("One item."))),
                optional("tick", list("These are done or bought.", text(item))),
                optional("untick", list("These are open again.", text(item))),
                optional("remove", list("Takes these off.", text(item))),
                optional("keep_only", list("Takes everything else off.", text(item))),
                optional("replace", text("An item that gets other words, those of `by`.")),
                optional("by", text("The new words.")),
                optional("clear_ticked", flag("True: takes off all that is ticked.")),
                optional("clear", flag("True: takes everything off.")),
                optional("rename", text("The list's new name.")),
                optional("delete", flag("True: puts the whole list, or that `note`, into the trash.")),
                optional("note", text("Id of a note that is no list; only with `delete`, when they ask for it.")),
                optional("undo", text("Token of an earlier result, and nothing else: takes that change back."))}),
        declaration("find_in_notebook",
            "Searches everything in the notebook: notes, clips, explanations, how-tos, facts about the user, "
            "reminders. Answers with the best matches, each with id, kind, title, snippet and dates; read_note gives "
            "the whole text. With `question`, `sentences` are those that hold the answer; where there are none the "
            "notebook does not say it, and `notes` only come near: invent nothing.",
            {required("query", text("The two or three words that matter. Empty lists the newest.")),
                optional(
                    "question", text("What they want to know, in their words: \"where did I put the spare key\".")),
                optional("kind",
                    choice("Only this kind; about_me holds facts about the user.",
                        {"note", "clip", "explanation", "how_to", "about_me"})),
                optional("limit", integer("At most so many, 1 to 50. Default 10."))}),
        declaration("read_note", "Reads one note whole.",
            {required("id", text("The note's id, 12 characters, from find_in_notebook."))}),
        declaration("explain",
            "Keeps an explanation that the user asked for, so that they can read it again. Say it to them as well.",
            {required("question", text("What they wanted to know, in their words.")),
                required("text", text("The explanation; Markdown is fine.")),
                optional("level", choice("How deep it goes. Default: normal.", {"simple", "normal", "detailed"})),
                optional("undo", text("Token of an earlier result, alone: takes that change back."))}),
        declaration("save_how_to", "Keeps a way of doing something that worked, so that it can be followed again.",
            {required("title", text("A few words, such as \"Send a photo by e-mail\".")),
                required("goal", text("What one has at the end.")),
                required("steps", list("The steps in order, as one would tell them.", text("One step."))),
                optional("based_on", text("Id of the how-to that this one replaces.")),
                optional("undo", text("Token of an earlier result, alone: takes that change back."))}),
        declaration("remember_about_them",
            "Remembers one lasting fact about the user that they told you. Never secrets, health details they didn't "
            "ask to keep, or guesses. Give `fact`, `forget` or `undo`.",
            {optional("fact", text("One sentence in the third person, such as \"Prefers large print.\".")),
                optional("forget",
                    text("Words of the fact that is to be forgotten, or its id: \"large print\". Only when they ask "
                         "for it.")),
                optional("undo", text("What an earlier answer gave as `undo`: takes just that back."))}),
        declaration("open_notebook", "Shows the notebook on the screen.",
            {optional("id", text("The note to show. Default: the list."))}),
    });
}

Json reminders()
{
    return Json::array({
        declaration("set_reminder",
            "Sets, lists, changes, ticks off or puts off a reminder, an alarm or a timer. To set one, give the user's "
            "own words in `text`. "
            "Answers \"set\" with the day and hour in words; or, with nothing stored, \"which_time\" with the choices, "
            "\"needs_time\" or \"needs_task\": ask the user and call again.",
            {
                optional("text",
                    text("What they said, whole, with the words for the time: \"call the dentist tomorrow at 5 pm\".")),
                optional("task", text("What to be reminded of, without the time; with `date`, or in a second call.")),
                optional("date", dateText("The moment, when it is settled:")),
                optional("repeat",
                    text("\"daily\", \"weekdays\", \"weekly:2\" (1 Sunday to 7 Saturday, several with commas), "
                         "\"monthly:15\" or \"yearly\"; as an earlier answer gave it. \"none\" ends the repeating.")),
                optional("when_back", flag("True: when the user is next back at the computer, instead of at a time.")),
                optional("alarm",
                    flag("True: it rings until they stop it, as for \"wake me at 7\"; a task is not needed then. An "
                         "hour "
                         "without a half of the day is the likely one; the answer names the `other`.")),
                optional("timer_seconds",
                    integer("Sets a timer that counts down so many seconds and then rings; `task` is its name.")),
                optional("kind",
                    choice("Which of them is meant, where one is listed, changed, cancelled or put off. Default: "
                           "reminder.",
                        {"reminder", "alarm", "timer", "all"})),
                optional("list", flag("True: lists what is pending, each with its id.")),
                optional("pause", flag("True: that timer is paused.")),
                optional("resume", flag("True: that timer goes on.")),
                optional("add_seconds", integer("Lengthens that timer; below 0 shortens it.")),
                optional("stop", flag("True: silences what rings.")),
                optional("snooze_minutes", integer("Silences what rings and has it ring again after so long.")),
                optional("ids", list("With `cancel`: several at once, each whole.", text("An id."))),
                optional("undo", text("The token that an earlier answer gave: takes just that change back.")),
                optional("id",
                    text(
                        "An existing reminder, to change it, tick it off or put it off. Without it `task` may name the "
                        "reminder; without both, the one that is due is meant.")),
                optional("done", flag("True: that one is done; what repeats goes on.")),
                optional("cancel",
                    flag("True: they do not want that one any more. Where it repeats and `series` is not given, the "
                         "answer is \"which_occurrences\": ask the user and call again.")),
                optional("series", flag("With `cancel`: true for all of it, false for the next time only.")),
                optional("until",
                    dateText("With `cancel`, of alarms: those that repeat do not ring up to the end of that day, and "
                             "go on behind it.")),
                optional("later",
                    text("Until when that one is put off, in the user's words, such as \"in an hour\" or "
                         "\"tomorrow morning\".")),
            }),
    });
}

/// Of tools that change something.
constexpr std::string_view takesBack =
    "Alone: the token that an earlier answer gave as `undo`. Takes exactly that change back.";

Json days()
{
    return Json::array({
        declaration("whats_on", "Lists events and reminders of a stretch of days, in order, each with its id.",
            {optional("from", dateText("First day or moment. Default: now.")),
                optional("to", dateText("Last day or moment. Default: the end of the first day.")),
                optional("words",
                    text("Only what holds these words, such as \"dentist\", wherever it lies in a long stretch; of a "
                         "series only the first time."))}),
        declaration("find_free_time", "Finds gaps in the calendar during waking hours. Answers with a few that fit.",
            {required("minutes", integer("How long the gap must be.")),
                optional("from", dateText("Search from. Default: now.")),
                optional("to", dateText("Search until. Default: seven days later."))}),
        declaration("add_event", "Puts an event into the calendar. Answers with its id and its time in words.",
            {optional("title", text("What it is, in a few words. Needed for a new event.")),
                optional("start", dateText("When it begins; needed for a new event:")),
                optional("end", dateText("When it ends; or give `minutes`.")),
                optional("minutes", integer("How long it lasts. Default 60.")),
                optional("all_day", flag("True for whole days.")), optional("place", text("Where.")),
                optional("notes", text("Anything else worth keeping with it.")),
                optional("repeat",
                    text("Only when it comes again and again: \"daily\", \"weekdays\", \"weekly:2\" (1 Sunday to 7 "
                         "Saturday, several with commas), \"monthly:15\" or \"yearly\".")),
                optional("undo", text(takesBack))}),
        declaration("change_event", "Moves, changes or cancels an event. Give `changes` or `cancel`, never both.",
            {optional("id", text("The event's id, from whats_on.")),
                optional("ids",
                    list("In place of `id`, with `cancel` only: several that go after one yes.",
                        text("An event's id."))),
                optional("changes",
                    object("Only what changes.",
                        {optional("title", text("New title.")), optional("start", dateText("New start:")),
                            optional("end", dateText("New end:")), optional("all_day", flag("Whole days.")),
                            optional("place", text("New place.")), optional("notes", text("New notes."))})),
                optional("cancel",
                    flag(
                        "True removes the event. Answers first with a question for the user; call again once they have "
                        "said yes.")),
                optional("series", flag("True: all of a series, not only this time of it.")),
                optional("undo", text(takesBack))}),
    });
}

} // namespace

Json notebook()
{
    Json all = Json::array();
    for (const Json& part : {notes(), reminders(), days()})
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

Json connectedApps()
{
    return Json::array({
        declaration("connect_app",
            "Opens the page on which the user links an online account. They sign in themselves; an app event follows.",
            {required("app", text("The service, such as \"mail\" or \"calendar\", by its usual name."))}),
        declaration("check_connected_apps", "Lists the linked accounts and whether each one works."),
        declaration("search_connected_tools",
            "Finds tools of the linked accounts. Answers with names, descriptions and the arguments that they take.",
            {required("query", text("What you want to do, in a few words.")),
                optional("app", text("Only tools of this service."))}),
        declaration("execute_connected_tool",
            "Runs one tool of a linked account. Answers with ok, executed, and data or error.",
            {required("tool", text("The name exactly as search_connected_tools gave it.")),
                required("arguments",
                    text("The arguments as the text of a JSON object, exactly as the tool's description asks for them: "
                         "\"{\\\"to\\\": \\\"mina@example.com\\\"}\"."))}),
    });
}

} // namespace quorvell::tool_declarations
