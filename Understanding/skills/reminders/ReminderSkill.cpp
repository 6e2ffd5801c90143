// SPDX-License-Identifier: MIT
#include "Understanding/skills/reminders/ReminderSkill.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/reminders/FollowUpWish.h"
#include "Understanding/skills/reminders/ReminderCalls.h"
#include "Understanding/skills/reminders/ReminderCues.h"
#include "Understanding/skills/reminders/ReminderOccasion.h"
#include "Understanding/skills/reminders/ReminderOffer.h"
#include "Understanding/skills/reminders/ReminderQuery.h"
#include "Understanding/skills/reminders/ReminderReply.h"
#include "Understanding/skills/reminders/ReminderResults.h"
#include "Understanding/skills/reminders/ReminderRules.h"
#include "Understanding/time/SpokenMoment.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/time/SpokenWhen.h"
#include "Understanding/time/TimeWords.h"
#include "Understanding/words/CommonCues.h"
#include "Understanding/words/ListPlace.h"
#include "Understanding/words/RequestText.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <utility>

namespace quorvell {

namespace {

using Found = std::optional<Request>;

constexpr CueWeights weights[] = {
    {ReminderCues::remind, {{{"remind", 9}}}},
    {ReminderCues::wake, {{{"remind", 9}}}},
    {CommonCues::make, {{{"remind", 1}}}},
    {CommonCues::enter, {{{"remind", 1}}}},
    {CommonCues::read, {{{"listReminders", 2}}}},
    {CommonCues::show, {{{"listReminders", 2}}}},
    {CommonCues::tell, {{{"listReminders", 1}, {"remind", 2}}}},
    {CommonCues::cancel, {{{"finishReminder", 3}}}},
    {CommonCues::move, {{{"putOffReminder", 3}}}},
    {CommonCues::delay, {{{"putOffReminder", 4}}}},
    {ReminderCues::later, {{{"putOffReminder", 6}}}},
    {ReminderCues::done, {{{"finishReminder", 5}}}},
    {ReminderCues::stop, {{{"finishReminder", 5}}}},
    {CommonCues::what, {{{"listReminders", 2}}}},
    {CommonCues::have, {{{"listReminders", 1}}}},
    {CommonCues::there, {{{"listReminders", 1}}}},
    {CommonCues::any, {{{"listReminders", 1}}}},
    {ReminderCues::reminder,
        {{{"remind", 3}, {"finishReminder", 2}, {"putOffReminder", 3}, {"listReminders", 2}, {"addEvent", -4},
            {"moveEvent", -6}, {"cancelEvent", -4}, {"findNote", -4}}}},
    {ReminderCues::reminders,
        {{{"listReminders", 5}, {"finishReminder", 2}, {"addEvent", -4}, {"listEvents", -4}, {"cancelEvent", -4},
            {"findNote", -4}, {"readNote", -4}, {"keepNote", -4}}}},
    // "My next reminder" is one of the list.
    {ReminderCues::reminder, {{{"nextEvent", -8}}}},
    {ReminderCues::reminders, {{{"nextEvent", -8}}}},
    {ReminderCues::pending, {{{"listReminders", 5}, {"listEvents", -2}}}},
    {CommonCues::instead, {{{"putOffReminder", 2}}}},
    {CommonCues::foreign, {{{"finishReminder", -6}}}},
};

Found requestFor(std::optional<ReminderChange> change)
{
    return change ? Found(ReminderRules::request(*std::move(change))) : std::nullopt;
}

/// "To call the school tomorrow too": one more of what was spoken of, and no word of the task.
std::string withoutToo(const std::string& content, const RuleSurroundings& around)
{
    static const Pattern too(",? (?:too|as well)$", Pattern::caseless);
    const std::string rest = too.replaceAll(content, "");
    return rest != content && TimeWords::atEnd(rest, around) ? rest : content;
}

/// "Not now, remind me this evening" is about one that is there, and so is "remind me on friday instead".
Found remind(const RequestReading& reading, const RuleSurroundings& around)
{
    if (reading.has(ReminderCues::later))
        return std::nullopt;
    if (reading.has(CommonCues::instead)) {
        if (auto change = ReminderChange::puttingOff(reading, around))
            return requestFor(std::move(change));
    }
    const std::string lead = reading.has(ReminderCues::wake) ? "to wake up " : "";
    return ReminderRules::request(ReminderIntent::of(lead + withoutToo(reading.content, around)));
}

Found list(const RequestReading& reading, const RuleSurroundings& around)
{
    return requestFor(ReminderChange::listing(reading, around));
}

/// "Delete every reminder", "cancel the 7 am alarm": they are looked up, told and asked about.
Found finish(const RequestReading& reading, const RuleSurroundings& around)
{
    auto change = ReminderChange::finishing(reading);
    if (change && change->kind == ReminderChange::Kind::cancel && reading.has(ReminderCues::reminder))
        change = ReminderChange::ofTime(*std::move(change), around);
    return requestFor(std::move(change));
}

Found putOff(const RequestReading& reading, const RuleSurroundings& around)
{
    return requestFor(ReminderChange::puttingOff(reading, around));
}

constexpr RequestKind kinds[] = {
    {"remind", {.moment = 1, .duty = 2}, remind},
    {"listReminders", {}, list},
    {"finishReminder", {}, finish},
    {"putOffReminder", {.moment = 1, .length = 1, .newTime = 2}, putOff},
};

constexpr TrailingWish trailingWishes[] = {
    {"(?:remind|nudge|ping) me(?: (?:of|about) (?:that|this|it))?|(?:do not|don['’]?t) let me "
     "forget(?: (?:that|this|it|about it))?",
        "remind me ", "", "(?:i|we)(?:['’]ve)? (?:(?:have|need|want|ought|got|has) to|must|should)\\b"},
};

constexpr std::string_view tools[] = {"set_reminder"};

std::string ability(const RuleSurroundings& around)
{
    return around.offers("set_reminder") ? "set reminders, alarms and timers" : ""; // All three by one tool.
}

/// "Don't let me forget I have a parents' evening on monday at 4": what is to come is no fact to keep.
Found readPlea(const std::string& core, const RuleSurroundings& around)
{
    static const Pattern plea("^(?:please )?(?:do not|don['’]?t|never) let me forget (?:that |about the fact that )?"
                              "(?=(?:i|we|my|our|there)\\b)",
        Pattern::caseless);
    const auto match = plea.find(core);
    if (!match)
        return std::nullopt;
    const std::string what = core.substr(match->range.end);
    const auto moment = SpokenMoment::read(what, around);
    return moment && moment->namesDay ? Found(ReminderRules::request(ReminderIntent::of("that " + what)))
                                      : std::nullopt;
}

/// "Remind me when" is the opening of a question for others, so it is looked at with its first words.
Found readSaid(const std::string& words, const RuleSurroundings& around)
{
    if (auto occasion = ReminderOccasion::read(words, around))
        return ReminderOccasion::request(*std::move(occasion));
    return ReminderOffer::read(words, around);
}

/// "Remind me again about the rent on the 2nd": a second one, and the first stays.
Found readOneMore(const std::string& core, const RuleSurroundings& around)
{
    static const Pattern again(
        "^remind me again (?=(?:about|of|to) (?!(?:it|that|this|them|those|these)\\b))", Pattern::caseless);
    const auto match = again.find(core);
    const std::string what = match ? core.substr(match->range.end) : "";
    const auto moment = match ? SpokenMoment::read(what, around) : std::nullopt;
    return moment && moment->namesDay ? Found(ReminderRules::request(ReminderIntent::of(what))) : std::nullopt;
}

/// A time and nothing else is another time for what was talked about.
Found readPlain(const std::string& core, const RuleSurroundings& around)
{
    if (ListPlace::read(core)) // "The second one" is no day.
        return std::nullopt;
    if (auto request = readPlea(core, around))
        return request;
    if (auto request = readOneMore(core, around))
        return request;
    if (auto query = ReminderQuery::read(core))
        return query;
    if (auto wish = FollowUpWish::read(core, around))
        return ReminderRules::followUp(*std::move(wish));
    const std::string words = ReminderIntent::bareTime(core, around);
    if (words.empty())
        return std::nullopt;
    return ReminderRules::request(ReminderChange{.kind = ReminderChange::Kind::later, .when = words, .mayBeNew = true});
}

/// What they have done, or a task with its time but without the words that ask for a reminder.
Found readStatement(const std::string& core, const RuleSurroundings& around)
{
    if (auto change = ReminderChange::told(core))
        return requestFor(std::move(change));
    static const Pattern noun("^(?:(?:my|the|an?) )?(\\S+(?: \\S+){0,5}) reminder$", Pattern::caseless);
    if (const auto match = noun.find(core)) // "Passport renewal reminder".
        return ReminderRules::request(ReminderIntent::of("about " + match->texts[0]));
    const auto phrase = SpokenPhrase::read(core, around);
    auto intent = phrase ? ReminderIntent::readTimed(core, phrase->timeWords, phrase->task) : std::nullopt;
    return intent ? Found(ReminderRules::request(*std::move(intent))) : std::nullopt;
}

Found readElsewhere(
    const std::string& thing, const RequestReading& reading, const std::string& words, const RuleSurroundings& around)
{
    if (const std::string when = ReminderIntent::bareTime(words, around); thing.empty() && !when.empty())
        return ReminderRules::request(
            ReminderChange{.kind = ReminderChange::Kind::later, .when = when, .mayBeNew = true});
    if (!reading.has(ReminderCues::remind) || !TimeWords::isTime(reading.content, around))
        return std::nullopt;
    return ReminderRules::request(ReminderChange{.kind = ReminderChange::Kind::later,
        .task = ReminderChange::taskNamed(thing),
        .when = SpokenPhrase::withDigits(reading.content)});
}

/// "Did I set an alarm for 6 AM?": they see it in the list.
Found readQuestion(const RequestReading& reading, const RuleSurroundings&)
{
    const bool isOfReminders = reading.has(ReminderCues::reminder) || reading.has(ReminderCues::reminders)
        || reading.has(ReminderCues::remind);
    return isOfReminders ? Found(ReminderRules::request(ReminderChange{.kind = ReminderChange::Kind::list}))
                         : std::nullopt;
}

std::string questionBefore(const ToolRequest& call)
{
    const Json arguments = parseJson(call.arguments).value_or(Json::object());
    if (memberOf(arguments, "list"))
        return "";
    if (memberOf(arguments, "done"))
        return "Should I mark that reminder as done?";
    if (memberOf(arguments, "cancel"))
        return "Should I cancel that reminder?";
    if (memberOf(arguments, "later"))
        return "Should I move that reminder?";
    return memberOf(arguments, "id") ? "Should I change that reminder?" : "Should I set a reminder for that?";
}

Skill::Step undo(RequestMemory memory, const RuleSurroundings& around)
{
    const FoundThing reminder = memory.reminder;
    return ReminderRules::carryOutWith(reminder, {.kind = Wish::Kind::cancel}, std::move(memory), around);
}

Skill::Step addAnother(const std::string& words, RequestMemory memory, const RuleSurroundings& around)
{
    if (!memory.reminder.start)
        return std::nullopt;
    const auto call = ReminderCalls{around}.setAt(RequestText::written(words), *memory.reminder.start, {});
    return RuleStep{call, std::move(memory)};
}

void talkAbout(const FoundThing& reminder, RequestMemory& memory)
{
    memory.reminder = reminder;
    memory.talkOf(ReminderCalls::skill);
}

RuleStep changeListed(
    const Wish& wish, const FoundThing& reminder, RequestMemory memory, const RuleSurroundings& around)
{
    talkAbout(reminder, memory);
    return ReminderRules::carryOutWith(reminder, wish, std::move(memory), around);
}

RuleStep pointAt(const FoundThing& reminder, RequestMemory memory, const RuleSurroundings& around)
{
    talkAbout(reminder, memory);
    const std::string when =
        reminder.start ? ", " + SpokenWhen::on(SpokenWhen::dateSeenFrom(*reminder.start, around)) : "";
    return {reminder.title + when + ".", std::move(memory)};
}

} // namespace

constinit const Skill ReminderSkill::row{
    .name = ReminderCalls::skill,
    .tools = tools,
    .cues = ReminderCues::rows,
    .weights = weights,
    .kinds = kinds,
    .trailingWishes = trailingWishes,
    .ability = ability,
    .example = "remind me tomorrow at 5 PM to call the dentist",
    .readSaid = readSaid,
    .readPlain = readPlain,
    .readStatement = readStatement,
    .readElsewhere = readElsewhere,
    .readQuestion = readQuestion,
    .questionBefore = questionBefore,
    .takeResult = ReminderResults::take,
    .whatWasDone = ReminderReply::whatWasDone,
    .goOn = ReminderRules::onceMore,
    .undo = undo,
    .addAnother = addAnother,
    .retime = ReminderRules::retime,
    .changeListed = changeListed,
    .pointAt = pointAt,
};

} // namespace quorvell
