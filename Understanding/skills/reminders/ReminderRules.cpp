// SPDX-License-Identifier: MIT
#include "Understanding/skills/reminders/ReminderRules.h"

#include "QuorvellCore/reminders/state/ReminderRepeat.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/QuestionKind.h"
#include "Understanding/skills/reminders/ReminderCalls.h"
#include "Understanding/skills/reminders/ReminderQuestions.h"
#include "Understanding/time/SpokenLength.h"
#include "Understanding/time/SpokenMoment.h"
#include "Understanding/time/SpokenMove.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/time/SpokenRepeat.h"
#include "Understanding/time/SpokenWhen.h"
#include "Understanding/time/TimeWords.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <utility>

namespace quorvell {

namespace {

constexpr const char* vague = "later";
constexpr const char* whichThing = "Please say which reminder or event you mean, and when it should be.";
constexpr const char* whenInstead = "Please say at what time the reminder should come instead.";

constexpr const char* ruleUnknown = "I can remind you every day, every weekday, on a day of every week, every month or "
                                    "every year, and in no other way. "
                                    "Please say it in one of these ways.";

constexpr int minutesOfDay = 24 * 60;

std::string byMinutes(int minutes)
{
    return "by " + std::to_string(minutes) + " minutes";
}

/// "By half an hour": on from its own time, as "in half an hour" is from now.
bool isShift(const Wish& wish)
{
    return wish.minutes != 0 || wish.when.starts_with("by ");
}

bool isLength(const std::string& when)
{
    const auto length = SpokenLength::read(when);
    return length.has_value() || TimeWords::daysIn(when.starts_with("in ") ? when.substr(3) : when);
}

RuleStep askWhichTime(const FoundThing& reminder, const std::vector<DateParts>& dates, RequestMemory memory,
    const RuleSurroundings& around)
{
    std::vector<TimeChoice> choices;
    choices.reserve(dates.size());
    for (const DateParts& date : dates)
        choices.push_back({date, SpokenWhen::dateSeenFrom(date, around)});
    return RuleStep::asking({.kind = &ReminderQuestions::whichTime,
                                .question = ReminderQuestions::wordedChoices(choices),
                                .task = reminder.title,
                                .choices = choices,
                                .tool = ReminderCalls::tool,
                                .arguments = dumpJson(Json{{"id", reminder.id}})},
        std::move(memory));
}

/// Moved to where the words say; as they stand where it is not known when it is.
RuleStep move(const FoundThing& reminder, const std::string& when, RequestMemory memory, const RuleSurroundings& around)
{
    const ReminderCalls calls{around};
    const SpokenMove to = reminder.start && !isLength(when) && when != vague
        ? SpokenMove::read(when, *reminder.start, SpokenMove::FarHour::isAsked, around)
        : SpokenMove();
    if (to.choices.size() > 1)
        return askWhichTime(reminder, to.choices, std::move(memory), around);
    return {calls.putOffThis(reminder.id, to.choices.empty() ? when : to.choices.front().text()), std::move(memory)};
}

/// Then the hour is the one that the reminder has, which has to be looked up.
bool namesOnlyDay(const std::string& when, const RuleSurroundings& around)
{
    const auto phrase = isLength(when) ? std::nullopt : SpokenPhrase::read(when, around);
    return phrase && !phrase->hasTime && phrase->task.empty();
}

/// "Every month" is every month on its own day.
std::string ruleOfOwnDay(const std::string& words, const DateParts& own)
{
    static const Pattern plain(
        "^(?:every|each) (day|week|month|year)$|^(?:(dai)|(week)|(month)|(year))ly$", Pattern::caseless);
    const auto match = plain.find(words);
    const auto day = match ? Calendar::dayOf(own.year, own.month, own.day) : std::nullopt;
    if (!day)
        return {};
    const std::string unit =
        lowerCased(match->texts[0] + match->texts[1] + match->texts[2] + match->texts[3] + match->texts[4]);
    if (unit == "week")
        return "weekly:" + std::to_string(Calendar::weekday(*day));
    if (unit == "month")
        return "monthly:" + std::to_string(own.day);
    return unit == "year" ? "yearly" : "daily";
}

/// The first time of a rule at or after that one.
DateParts firstOf(const std::string& rule, const DateParts& date, const RuleSurroundings& around)
{
    const auto repeat = ReminderRepeat::fromStored(rule);
    const auto moment = date.instant(around.calendar);
    if (!repeat || !moment)
        return date;
    const Instant first = repeat->first(*moment, around.calendar);
    return date.allDay ? DateParts::fromDay(first, around.calendar) : DateParts::from(first, around.calendar);
}

DateParts atClockOf(DateParts day, const DateParts& clock)
{
    day.allDay = clock.allDay;
    day.hour = clock.hour;
    day.minute = clock.minute;
    return day;
}

/// The hour stays where none is named. What repeats already may stand far ahead: its new rule begins now.
RuleStep giveRule(
    const FoundThing& reminder, const std::string& words, RequestMemory memory, const RuleSurroundings& around)
{
    const ReminderCalls calls{around};
    memory.request.clear();
    const DateParts own = reminder.start.value_or(DateParts::fromDay(around.now, around.calendar));
    const DateParts today = atClockOf(DateParts::fromDay(around.now, around.calendar), own);
    if (const std::string rule = ruleOfOwnDay(words, own); !rule.empty()) {
        const bool beginsNow = reminder.repeats && rule != "yearly"; // Every year needs its own day.
        const auto first = beginsNow ? std::optional(firstOf(rule, today, around)) : reminder.start;
        return {calls.repeatThis(reminder.id, first, rule), std::move(memory)};
    }
    const DateParts from = reminder.repeats ? today : own;
    if (const auto several = SpokenRepeat::read(words); several && !several->stored.empty()) {
        const SpokenMove hour = several->rest.empty()
            ? SpokenMove{std::vector{from}}
            : SpokenMove::read(several->rest, from, SpokenMove::FarHour::isUsual, around);
        if (hour.choices.size() != 1)
            return {ruleUnknown, std::move(memory)};
        const DateParts first = firstOf(several->stored, hour.choices.front(), around);
        return {calls.repeatThis(reminder.id, first, several->stored), std::move(memory)};
    }
    const auto day = from.wholeDay().instant(around.calendar);
    const auto moment = day ? SpokenMoment::read(words, LocalTime{*day, around.calendar}) : std::nullopt;
    if (!moment || moment->repeat.empty())
        return {ruleUnknown, std::move(memory)};
    const DateParts first = moment->date.allDay ? atClockOf(moment->date, own) : moment->date;
    return {calls.repeatThis(reminder.id, first, moment->repeat), std::move(memory)};
}

/// "To take them": by the time it comes, nobody knows what that was.
std::optional<RuleStep> askWhatThatIs(
    const std::string& request, const RequestMemory& memory, const RuleSurroundings& around)
{
    static const Pattern pointed("^(\\S+) (them|these|those)$", Pattern::caseless);
    const auto phrase = SpokenPhrase::read(request, around);
    const auto match = phrase && phrase->hasTime && !phrase->isAmbiguous() ? pointed.find(phrase->task) : std::nullopt;
    if (!match)
        return std::nullopt;
    const std::string verb = lowerCased(match->texts[0]);
    return RuleStep::asking({.kind = &ReminderQuestions::whatThatIs,
                                .question = "What should I remind you to " + verb + "?",
                                .settled = {.clock = phrase->timeWords},
                                .arguments = dumpJson(Json{{"verb", verb}})},
        memory);
}

/// "Make that 15", behind "remind me in 10 minutes": 15 minutes, and no hour. Empty for anything else.
std::string lengthLikeBefore(const std::string& when, const std::string& request)
{
    static const Pattern bare("^(?:at |in )?(\\d{1,3})$", Pattern::caseless);
    static const Pattern unit(
        "\\bin (?:\\d+|an?|half an?|[a-z]+(?:-[a-z]+)?) (minutes?|mins?|hours?|hrs?)\\b", Pattern::caseless);
    const auto number = bare.find(when);
    const auto before = number ? unit.find(request) : std::nullopt;
    return before ? "in " + number->texts[0] + " " + before->texts[0] : std::string();
}

bool mayAnswer(const ReminderIntent& intent, const PendingQuestion& asked, const RuleSurroundings& around)
{
    const auto phrase = SpokenPhrase::read(intent.text, around);
    if (asked.kind == &ReminderQuestions::when || asked.kind == &ReminderQuestions::whichTime)
        return intent.isBare || (phrase && phrase->task.empty());
    return asked.kind == &ReminderQuestions::task && !phrase;
}

std::optional<Wish> wishIn(const ReminderChange& change)
{
    if (change.kind == ReminderChange::Kind::list || change.kind == ReminderChange::Kind::cancelAll)
        return std::nullopt;
    const bool isLater = change.kind == ReminderChange::Kind::later;
    return Wish{.kind = isLater ? Wish::Kind::move : Wish::Kind::cancel,
        .title = change.task,
        .when = change.when,
        .isDone = change.kind == ReminderChange::Kind::done};
}

} // namespace

Request ReminderRules::request(ReminderIntent intent)
{
    return {.answer = [intent](RequestMemory memory,
                          const RuleSurroundings& around) { return set(intent, std::move(memory), around); },
        .mayAnswer = [intent](const PendingQuestion& asked,
                         const RuleSurroundings& around) { return quorvell::mayAnswer(intent, asked, around); }};
}

Request ReminderRules::request(ReminderChange change)
{
    const bool isAll = change.kind == ReminderChange::Kind::cancelAll;
    const auto wish = isAll ? Wish{.kind = Wish::Kind::cancel, .scope = Wish::Scope::all} : wishIn(change);
    // A bare time, or "done", may well be the answer; to whether something should be done it is none.
    return {.answer =
                [change](RequestMemory memory, const RuleSurroundings& around) {
                    return ReminderRules::change(change, std::move(memory), around);
                },
        .wish = wish,
        .mayAnswer =
            [wish](const PendingQuestion& asked, const RuleSurroundings&) {
                return wish && wish->title.empty() && wish->scope != Wish::Scope::all
                    && !QuestionKind::isYesOrNo(asked);
            }};
}

Request ReminderRules::followUp(Wish wish)
{
    // Without its own time nobody knows what is earlier, or the same time.
    const bool mayBeDue = !wish.from.empty() || wish.minutes > 0 || !wish.title.empty();
    return {
        .answer =
            [wish, mayBeDue](RequestMemory memory, const RuleSurroundings& around) {
                if (!wish.repeat.empty())
                    return set({.text = "remind me " + wish.repeat}, std::move(memory), around);
                return mayBeDue ? carryOut(wish, std::move(memory), around) : RuleStep{whichThing, std::move(memory)};
            },
        .wish = wish,
        .mayAnswer = [isNamed = !wish.title.empty()](const PendingQuestion& asked,
                         const RuleSurroundings&) { return !isNamed && !QuestionKind::isYesOrNo(asked); }};
}

std::optional<RuleStep> ReminderRules::onceMore(
    const std::string& words, const RequestMemory& memory, const RuleSurroundings& around)
{
    static const Pattern more(
        "^and (?:also |again |then |(?:another|one more)(?: one)? )?((?:at|on|tomorrow|tonight|in "
        "the) ?.*?)(?: too| as well| again)?[.!]?$",
        Pattern::caseless);
    static const Pattern also(
        "^(?:and |please )?also remind me (?:again )?(?:about|of) (?:it|that|this) (.+?)[.!]?$", Pattern::caseless);
    const FoundThing& reminder = memory.reminder;
    const auto found = more.find(words);
    const auto match = found ? found : also.find(words);
    const std::string when = match ? ReminderIntent::bareTime(match->texts[0], around) : "";
    if (when.empty() || reminder.id.empty() || !reminder.start || reminder.title.empty())
        return std::nullopt;
    if (reminder.repeats)
        return RuleStep{"Please say that one as a whole, with how often it should come.", memory};
    const SpokenMove to = SpokenMove::read(when, *reminder.start, SpokenMove::FarHour::isAsked, around);
    const ReminderCalls calls{around};
    RuleStep step{to.choices.size() == 1 ? calls.setAt(reminder.title, to.choices.front(), "")
                                         : calls.setTask(reminder.title, when),
        memory};
    step.memory.wish = {};
    return step;
}

RuleStep ReminderRules::set(const ReminderIntent& intent, RequestMemory memory, const RuleSurroundings& around)
{
    if (intent.isBare)
        return RuleStep::asking(
            {.kind = &ReminderQuestions::whole, .question = "What do you want to be reminded of, and when?"},
            std::move(memory));
    memory.request = intent.text;
    memory.wish = {};
    if (auto step = askWhatThatIs(intent.text, memory, around))
        return *std::move(step);
    return {ReminderCalls{around}.set(intent.text), std::move(memory)};
}

RuleStep ReminderRules::change(const ReminderChange& change, RequestMemory memory, const RuleSurroundings& around)
{
    memory.request = change.mayBeNew ? "remind me " + change.when : "";
    memory.wish = {};
    if (const auto wish = wishIn(change))
        return carryOut(*wish, std::move(memory), around);
    if (change.kind == ReminderChange::Kind::cancelAll)
        memory.wish = {.kind = Wish::Kind::cancel, .scope = Wish::Scope::all};
    memory.days = change.days;
    return {ReminderCalls{around}.list(), std::move(memory)};
}

RuleStep ReminderRules::carryOut(const Wish& wish, RequestMemory memory, const RuleSurroundings& around)
{
    const ReminderCalls calls{around};
    if (wish.kind == Wish::Kind::cancel)
        return {wish.isDone ? calls.finish(wish.title) : calls.cancel(wish.title), std::move(memory)};
    // Its own time has to be looked up: the hour stays, or it is moved from there.
    const bool isEarlier = wish.when.empty() && wish.minutes < 0;
    if (!wish.title.empty() && (isEarlier || namesOnlyDay(wish.when, around))) {
        memory.wish = wish;
        memory.days.reset();
        return {calls.list(), std::move(memory)};
    }
    return putOff(wish, std::move(memory), around);
}

RuleStep ReminderRules::putOff(const Wish& wish, RequestMemory memory, const RuleSurroundings& around)
{
    const ReminderCalls calls{around};
    if (wish.when.empty() && wish.minutes < 0)
        return {whichThing, std::move(memory)};
    return {calls.putOff(wish.title, wish.when.empty() ? byMinutes(wish.minutes) : wish.when), std::move(memory)};
}

RuleStep ReminderRules::carryOutWith(
    const FoundThing& reminder, const Wish& wish, RequestMemory memory, const RuleSurroundings& around)
{
    const ReminderCalls calls{around};
    memory.request.clear();
    if (wish.kind == Wish::Kind::cancel)
        return {wish.isDone ? calls.finishThis(reminder.id) : calls.cancelThis(reminder.id), std::move(memory)};
    if (!wish.when.empty())
        return move(reminder, wish.when, std::move(memory), around);
    if (wish.minutes != 0 && reminder.start && !reminder.start->allDay)
        return {calls.putOffThis(reminder.id, reminder.start->adding(wish.minutes).text()), std::move(memory)};
    if (wish.minutes != 0 && reminder.start && wish.minutes % minutesOfDay == 0)
        return {
            calls.putOffThis(reminder.id, reminder.start->adding(wish.minutes).wholeDay().text()), std::move(memory)};
    if (wish.minutes <= 0)
        return {whenInstead, std::move(memory)};
    return {calls.putOffThis(reminder.id, byMinutes(wish.minutes)), std::move(memory)};
}

std::optional<RuleStep> ReminderRules::retime(const Wish& wish, RequestMemory memory, const RuleSurroundings& around)
{
    const FoundThing reminder = memory.reminder;
    if (reminder.id.empty() || wish.when == vague)
        return std::nullopt;
    if (const std::string length = lengthLikeBefore(wish.when, memory.request); !length.empty())
        return RuleStep{ReminderCalls{around}.putOffThis(reminder.id, length), std::move(memory)};
    if (!wish.repeat.empty())
        return giveRule(reminder, wish.repeat, std::move(memory), around);
    if (!isShift(wish) && (isLength(wish.when) || !reminder.start))
        return std::nullopt;
    if (!wish.from.empty() && reminder.start && !SpokenMove::isAt(wish.from, *reminder.start, around))
        return RuleStep{reminder.title + " is " + SpokenWhen::on(SpokenWhen::dateSeenFrom(*reminder.start, around))
                + ". " + whenInstead,
            std::move(memory)};
    return carryOutWith(reminder, wish, std::move(memory), around);
}

std::optional<RuleStep> ReminderRules::putOffAhead(
    const std::string& later, const RequestMemory& memory, const RuleSurroundings& around)
{
    constexpr int vagueMinutes = 60;
    const FoundThing& reminder = memory.reminder;
    const auto own =
        reminder.start && !reminder.start->allDay ? reminder.start->instant(around.calendar) : std::nullopt;
    if (!own || *own <= around.now)
        return std::nullopt;
    if (later == vague)
        return RuleStep{
            ReminderCalls{around}.putOffThis(reminder.id, reminder.start->adding(vagueMinutes).text()), memory};
    const auto fromNow = later.starts_with("in ") ? SpokenMoment::read(later, around) : std::nullopt;
    const auto fromOwn = fromNow ? SpokenMoment::read(later, LocalTime{*own, around.calendar}) : std::nullopt;
    if (!fromOwn || fromOwn->date.allDay || fromNow->date.allDay)
        return std::nullopt;
    if (fromNow->date >= reminder.start)
        return RuleStep{ReminderCalls{around}.putOffThis(reminder.id, later), memory};
    return askWhichTime(reminder, {fromOwn->date, fromNow->date}, memory, around);
}

} // namespace quorvell
