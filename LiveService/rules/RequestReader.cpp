#include "LiveService/rules/RequestReader.h"

#include "LiveService/rules/FactWords.h"
#include "LiveService/rules/RequestText.h"
#include "LiveService/rules/TimeWords.h"
#include "QuorvellCore/reminders/ReminderPhrase.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/CueTable.h"
#include "Understanding/RequestEvidence.h"

#include <utility>

namespace quorvell {

namespace {

using Found = std::optional<Request>;
using Purpose = RequestMemory::SearchPurpose;

constexpr auto caseless = Pattern::Case::insensitive;

template <typename Intent> Found found(std::optional<Intent> intent)
{
    return intent ? Found(std::move(*intent)) : std::nullopt;
}

TimeHints hintsIn(const RequestReading& reading, const RuleSurroundings& around)
{
    static const Pattern duty("(?:^|\\s)(?:to|that|about) (?=[a-z])", caseless);
    static const Pattern newTime(
        "^(?!.*\\bfrom\\b).*\\S (?:to|is(?: now)? at) (?:\\d|noon|midday|half|quarter|today|tomorrow|next"
        "|(?:mon|tues|wednes|thurs|fri|satur|sun)day)|\\S later$",
        caseless);
    if (reading.isVerbatim || reading.content.empty())
        return {};
    std::string others;
    const auto moment = SpokenMoment::read(reading.content, around);
    constexpr std::size_t dayOnly = 10; ///< "2026-11-22"
    const auto end = TimeWords::atEnd(reading.content, around);
    const auto last = end ? SpokenMoment::read(end->time, around) : std::nullopt;
    return {.hasMoment = (moment && moment->date.size() > dayOnly) || (last && last->date.size() > dayOnly),
        .hasDay = SpokenDays::find(reading.content, around, others).has_value(),
        .hasLength = SpokenLength::read(reading.content) || (end && SpokenLength::read(end->time)),
        .hasNewTime = end && newTime.find(reading.content),
        .hasDuty = moment && duty.find(reading.content)};
}

/// "Remember ..." may mean a fact, something to write down, or something to do.
Found remembered(const RequestReading& reading, const RuleSurroundings& around)
{
    static const Pattern statement("^(?:that|this)\\b|\\b(?:is|are|was|were|has|have|likes?|lives?|needs?|owes?|works?"
                                   "|wants?|said|will be)\\b|^(?:i|we)\\b",
        caseless);
    static const Pattern duty("^to\\b", caseless);
    const auto certainty = reading.has(Cue::know) ? FactWords::Certainty::told : FactWords::Certainty::likely;
    if (around.offers("remember_about_them")) {
        if (auto fact = FactWords::read(reading.content, certainty))
            return FactIntent{std::move(*fact)};
    }
    // "Is there anything I should remember?"
    if (reading.content.empty() && (reading.has(Cue::what) || reading.has(Cue::any)))
        return ReminderChange{.kind = ReminderChange::Kind::list};
    const bool isTask = duty.find(reading.content) || !statement.find(reading.content);
    return isTask && !reading.has(Cue::know) ? Found(ReminderIntent::of(reading.content))
                                             : Found(NoteIntent::keeping(reading.content));
}

/// "Not now, remind me this evening" is about one that is there.
Found reminding(const RequestReading& reading)
{
    if (reading.has(Cue::later))
        return std::nullopt;
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
        return reminding(reading);
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
    const auto phrase = ReminderPhrase::parse(RequestText::withDigits(core), around.now, around.calendar);
    return phrase ? ReminderIntent::readTimed(core, phrase->timeWords, phrase->task) : std::nullopt;
}

/// A time and nothing else is another time for what was talked about.
std::optional<ReminderChange> bareTime(const std::string& core, const RuleSurroundings& around)
{
    static const Pattern instead("\\s+instead$", caseless);
    const std::string words = RequestText::withDigits(ReminderIntent::timeAnswer(instead.replaceAll(core, "")));
    const auto phrase = ReminderPhrase::parse(words, around.now, around.calendar);
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

/// What comes behind a reason: "Ana is ill, cancel our lunch". Nothing when the first words ask already.
Found afterReason(const std::string& core, const RuleSurroundings& around)
{
    const RequestWords words(core);
    if (CueTable::at(words, 0, CuePlace::start))
        return std::nullopt;
    for (std::size_t index = 0; index + 1 < words.size(); ++index) {
        if (!words.endsClause(index))
            continue;
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

} // namespace

std::optional<Request> RequestReader::read(std::string_view words, const RuleSurroundings& around)
{
    const std::string core = RequestText::withWishFirst(std::string(words), around);
    if (auto choice = NoteIntent::readChoice(core))
        return *choice;
    if (auto change = bareTime(core, around))
        return *change;
    for (const auto reader : {afterReason, likeliest}) {
        if (auto request = reader(core, around))
            return request;
    }
    if (auto change = ReminderChange::told(core))
        return *change;
    return found(timedTask(core, around));
}

} // namespace quorvell
