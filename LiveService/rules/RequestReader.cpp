// SPDX-License-Identifier: MIT
#include "LiveService/rules/RequestReader.h"

#include "LiveService/rules/FactWords.h"
#include "LiveService/rules/RequestText.h"
#include "LiveService/rules/SeriesWords.h"
#include "LiveService/rules/TimeVocabulary.h"
#include "LiveService/rules/TimeWords.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/CueTable.h"
#include "Understanding/RequestEvidence.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quorvell {

namespace {

using Found = std::optional<Request>;
using Purpose = RequestMemory::SearchPurpose;

constexpr auto caseless = Pattern::Case::insensitive;
constexpr int mostReasons = 6;

template <typename Intent> Found found(std::optional<Intent> intent)
{
    return intent ? Found(std::move(*intent)) : std::nullopt;
}

TimeHints hintsIn(const RequestReading& reading, const RuleSurroundings& around)
{
    static const Pattern duty("(?:^|\\s)(?:to|that|about) (?=[a-z])", caseless);
    static const Pattern newTime(
        "^(?!.*\\bfrom\\b).*\\S (?:to|(?:is|are)(?: now)? at) (?:\\d|noon|midday|half|quarter|today|tomorrow|next"
        "|" + std::string(TimeVocabulary::weekday)
            + ")|\\S later$",
        caseless);
    if (reading.isVerbatim || reading.content.empty() || RequestText::isStory(reading.content))
        return {};
    std::string others;
    const auto moment = SpokenMoment::read(reading.content, around);
    constexpr std::size_t dayOnly = 10; ///< "2026-11-22"
    const std::string once = SeriesWords::read(reading.content).rest;
    const auto end = TimeWords::atEnd(once, around);
    const auto last = end ? SpokenMoment::read(end->time, around) : std::nullopt;
    return {.hasMoment = (moment && moment->date.size() > dayOnly) || (last && last->date.size() > dayOnly),
        .hasDay = SpokenDays::find(reading.content, around, others).has_value(),
        .hasLength = SpokenLength::read(reading.content) || (end && SpokenLength::read(end->time)),
        .hasNewTime = end && newTime.find(once),
        .hasDuty = moment && duty.find(reading.content)};
}

/// "Remember ..." may mean a fact, something to write down, or something to do.
Found remembered(const RequestReading& reading, const RuleSurroundings& around)
{
    static const Pattern duty("^to\\b", caseless);
    const auto certainty = reading.has(Cue::know) ? FactWords::Certainty::told : FactWords::Certainty::likely;
    if (around.offers("remember_about_them")) {
        if (auto fact = FactWords::read(reading.content, certainty))
            return FactIntent{std::move(*fact)};
    }
    // "Is there anything I should remember?"
    if (reading.content.empty() && (reading.has(Cue::what) || reading.has(Cue::any)))
        return ReminderChange{.kind = ReminderChange::Kind::list};
    const bool isTask = duty.find(reading.content) || !FactWords::isStatement(reading.content);
    return isTask && !reading.has(Cue::know) ? Found(ReminderIntent::of(reading.content))
                                             : Found(NoteIntent::keeping(reading.content));
}

/// "Not now, remind me this evening" is about one that is there, and so is "remind me on friday instead".
Found reminding(const RequestReading& reading, const RuleSurroundings& around)
{
    if (reading.has(Cue::later))
        return std::nullopt;
    if (reading.has(Cue::instead)) {
        if (auto change = ReminderChange::puttingOff(reading, around))
            return std::move(*change);
    }
    return ReminderIntent::of((reading.has(Cue::wake) ? "to wake up " : "") + reading.content);
}

/// What nobody named may be a reminder as well: it is left open.
Found moving(const RequestReading& reading, const RuleSurroundings& around)
{
    auto moved = AgendaIntent::moving(reading, around);
    const bool isNamed = moved && (!moved->title.empty() || reading.has(Cue::earlier));
    return moved && !isNamed ? found(ReminderChange::puttingOff(reading, around)) : found(std::move(moved));
}

/// Opens the notebook itself only when nothing in it is asked for.
Found opening(const RequestReading& reading, const RuleSurroundings& around)
{
    const bool isWhole = reading.has(Cue::notebook) && reading.content.empty();
    return isWhole && around.offers("open_notebook") ? Found(NotebookIntent::open) : std::nullopt;
}

/// The words as a request of one kind; nothing when its parts are not in them.
Found as(RequestKind kind, const RequestReading& reading, const RuleSurroundings& around)
{
    switch (kind) {
    case RequestKind::remind:
        return reminding(reading, around);
    case RequestKind::remember:
        return remembered(reading, around);
    case RequestKind::listReminders:
        return found(ReminderChange::listing(reading, around));
    case RequestKind::finishReminder:
        return found(ReminderChange::finishing(reading));
    case RequestKind::putOffReminder:
        return found(ReminderChange::puttingOff(reading, around));
    case RequestKind::listEvents:
        return found(AgendaIntent::listing(reading, around));
    case RequestKind::nextEvent:
        return found(AgendaIntent::following(reading, around));
    case RequestKind::findTime:
        return found(AgendaIntent::findingTime(reading, around));
    case RequestKind::addEvent:
        return found(AgendaIntent::adding(reading, around));
    case RequestKind::moveEvent:
        return moving(reading, around);
    case RequestKind::cancelEvent:
        return found(AgendaIntent::cancelling(reading, around));
    case RequestKind::keepNote:
        return NoteIntent::keeping(reading.content);
    case RequestKind::readNote:
        return found(NoteIntent::searching(reading, Purpose::read));
    case RequestKind::findNote:
        return found(NoteIntent::searching(reading, Purpose::tell));
    case RequestKind::openNotebook:
        return opening(reading, around);
    case RequestKind::deleteNote:
        return reading.has(Cue::note) || reading.has(Cue::notes) || reading.has(Cue::newest)
            ? Found(NotebookIntent::deleteNote)
            : std::nullopt;
    case RequestKind::addAnother:
        return reading.content.empty() ? std::nullopt : Found(AnotherIntent{reading.content});
    case RequestKind::count:
        break;
    }
    return std::nullopt;
}

/// A request with a time but without the words that ask for a reminder.
std::optional<ReminderIntent> timedTask(const std::string& core, const RuleSurroundings& around)
{
    const auto phrase = TimeWords::phraseIn(core, around);
    return phrase ? ReminderIntent::readTimed(core, phrase->timeWords, phrase->task) : std::nullopt;
}

/// A time and nothing else is another time for what was talked about.
std::optional<ReminderChange> bareTime(const std::string& core, const RuleSurroundings& around)
{
    static const Pattern instead(",?\\s+instead$", caseless);
    const std::string words = RequestText::withDigits(ReminderIntent::timeAnswer(instead.replaceAll(core, "")));
    const auto phrase = TimeWords::phraseIn(words, around);
    if (!phrase || !phrase->task.empty() || phrase->repeatRule)
        return std::nullopt;
    return ReminderChange{.kind = ReminderChange::Kind::later, .when = words};
}

Found likeliest(const std::string& core, const RuleSurroundings& around)
{
    const RequestReading reading = RequestReading::of(core);
    for (const RequestKind kind : RequestEvidence::ranked(reading, hintsIn(reading, around))) {
        if (auto request = as(kind, reading, around))
            return request;
    }
    return std::nullopt;
}

/// Whether the words behind that one are a clause of their own: behind a sign or, as nobody says signs, where they
/// begin to ask.
bool isBoundary(const RequestWords& words, std::size_t index)
{
    constexpr std::array<std::string_view, 5> helpers{"can", "could", "would", "will", "shall"};
    constexpr std::array<std::string_view, 3> persons{"we", "you", "i"};
    constexpr std::array<std::string_view, 3> movers{"make", "move", "put"};
    const std::string_view next = words.at(index + 1);
    const std::string_view second = words.at(index + 2);
    const bool asks =
        std::ranges::find(helpers, next) != helpers.end() && std::ranges::find(persons, second) != persons.end();
    const bool moves = std::ranges::find(movers, next) != movers.end() && (second == "it" || second == "that");
    return words.endsClause(index) || asks || moves || next == "please" || (next == "remind" && second == "me")
        || (next == "let" && second == "us");
}

/// What comes behind a reason: "Ana is ill, cancel our lunch". Nothing when the first words ask already. Only the first
/// few clauses are looked behind: nobody gives more reasons.
Found afterReason(const std::string& core, const RuleSurroundings& around)
{
    const RequestWords words(core);
    if (CueTable::at(words, 0, CuePlace::start))
        return std::nullopt;
    int reasons = 0;
    for (std::size_t index = 0; index + 1 < words.size() && reasons < mostReasons; ++index) {
        if (!words.endsClause(index))
            continue;
        ++reasons;
        const std::string rest = RequestText::withoutOpening(words.said(index + 1, words.size()));
        if (!CueTable::at(RequestWords(rest), 0, CuePlace::head))
            continue;
        // A bare "done" is about what was said before it.
        if (RequestReading::of(rest).content.empty())
            continue;
        if (auto request = likeliest(rest, around))
            return request;
    }
    return std::nullopt;
}

/// The words of a clause that name one thing: "the dentist" of "the dentist", "I don't need the dentist any more",
/// "I can't do the dentist tomorrow".
std::string thingNamed(const RequestReading& clause, const RuleSurroundings& around)
{
    static const Pattern thing("^(?:the|my|our|his|her|their)(?: \\S+){1,3}$", caseless);
    if (clause.has(Cue::unable)) {
        const auto moved = AgendaIntent::moving(clause, around);
        return moved ? moved->title : std::string();
    }
    const bool isThing = thing.find(clause.content) || (clause.has(Cue::occasion) && !clause.has(Cue::own));
    return isThing && !clause.isVerbatim ? clause.content : std::string();
}

/// What is asked of a thing that was named before: "can we make that friday?"
Found askedOf(const std::string& thing, std::string rest, const RuleSurroundings& around)
{
    static const Pattern pronoun("\\b(?:(?:that|this) one|it|that|this|them)\\b", caseless);
    const auto match = pronoun.find(rest);
    if (!match || !CueTable::at(RequestWords(rest), 0, CuePlace::head) || RequestReading::of(rest).isVerbatim)
        return std::nullopt;
    return likeliest(rest.replace(match->range.start, match->range.end - match->range.start, thing), around);
}

/// Another time for what cannot stay as it is: "remind me on tuesday at 9 am instead". Without a name, "it" is meant.
Found elsewhere(const std::string& thing, const std::string& rest, const RuleSurroundings& around)
{
    const RequestReading reading = RequestReading::of(rest);
    if (reading.has(Cue::remind) && TimeWords::isTime(reading.content, around))
        return ReminderChange{.kind = ReminderChange::Kind::later,
            .task = ReminderChange::taskNamed(thing),
            .when = RequestText::withDigits(reading.content)};
    if (const auto change = bareTime(rest, around)) {
        if (thing.empty())
            return *change;
        return AgendaIntent{
            .kind = AgendaIntent::Kind::move, .days = SpokenDays::ahead(around), .title = thing, .when = change->when};
    }
    auto request = likeliest(rest, around);
    auto* moved = request ? std::get_if<AgendaIntent>(&*request) : nullptr;
    if (moved && moved->kind == AgendaIntent::Kind::move && moved->title.empty())
        moved->title = thing;
    return request;
}

/// What is named first is what "that" means behind it: "the dentist, can we make that friday?"
Found namedFirst(const std::string& core, const RuleSurroundings& around)
{
    const RequestWords words(core);
    int clauses = 0;
    for (std::size_t index = 0; index + 1 < words.size() && clauses < mostReasons; ++index) {
        if (!isBoundary(words, index))
            continue;
        ++clauses;
        const RequestReading first = RequestReading::of(words.said(0, index + 1));
        const std::string thing = thingNamed(first, around);
        const std::string rest = RequestText::withoutOpening(words.said(index + 1, words.size()));
        auto request = thing.empty() ? std::nullopt : askedOf(thing, rest, around);
        if (!request && first.has(Cue::unable))
            request = elsewhere(thing, rest, around);
        if (request)
            return request;
    }
    return std::nullopt;
}

/// Whether it names something that is there already, which it changes.
bool changesNamed(const Request& request)
{
    if (const auto* change = std::get_if<ReminderChange>(&request))
        return !change->task.empty();
    const auto* intent = std::get_if<AgendaIntent>(&request);
    return intent && !intent->title.empty()
        && (intent->kind == AgendaIntent::Kind::move || intent->kind == AgendaIntent::Kind::cancel);
}

/// What comes before a reason: "cancel my lunch, I am ill". What is to be written down may well give one.
Found beforeReason(const std::string& core, const RuleSurroundings& around)
{
    static const Pattern reason("^(?:i|we|he|she|they|it|because|since|as)$");
    const RequestWords words(core);
    for (std::size_t index = 0; index + 1 < words.size(); ++index) {
        if (!words.endsClause(index) || !reason.find(words.at(index + 1)))
            continue;
        auto request = likeliest(RequestText::withoutClosing(words.said(0, index + 1)), around);
        return request && changesNamed(*request) ? request : std::nullopt;
    }
    return std::nullopt;
}

} // namespace

std::optional<Request> RequestReader::read(std::string_view words, const RuleSurroundings& around)
{
    const std::string core = RequestText::withWishFirst(std::string(words), around);
    if (auto choice = NoteIntent::readChoice(core))
        return *choice;
    if (auto change = bareTime(core, around))
        return *change;
    for (const auto reader : {namedFirst, beforeReason, afterReason, likeliest}) {
        if (auto request = reader(core, around))
            return request;
    }
    if (auto change = ReminderChange::told(core))
        return *change;
    return found(timedTask(core, around));
}

} // namespace quorvell
