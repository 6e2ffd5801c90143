// SPDX-License-Identifier: MIT
#include "Understanding/requests/RequestReader.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/SeriesWords.h"
#include "Understanding/requests/CarefulStep.h"
#include "Understanding/requests/RequestEvidence.h"
#include "Understanding/requests/SkillTable.h"
#include "Understanding/requests/WishFirst.h"
#include "Understanding/time/SpokenDays.h"
#include "Understanding/time/SpokenLength.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/time/TimeVocabulary.h"
#include "Understanding/time/TimeWords.h"
#include "Understanding/words/CommonCues.h"
#include "Understanding/words/RequestText.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quorvell {

namespace {

using Found = std::optional<Request>;

constexpr int mostReasons = 6;

RequestReading readingOf(std::string_view words)
{
    return RequestReading::of(words, SkillTable::cues());
}

TimeHints hintsIn(const RequestReading& reading, const RuleSurroundings& around)
{
    static const Pattern duty("(?:^|\\s)(?:to|that|about) (?=[a-z])", Pattern::caseless);
    static const Pattern newTime(
        "^(?!.*\\bfrom\\b).*\\S (?:to|(?:is|are)(?: now)? at) (?:\\d|noon|midday|half|quarter|today|tomorrow|next"
        "|" + std::string(TimeVocabulary::weekday)
            + ")|\\S later$",
        Pattern::caseless);
    if (reading.isVerbatim || reading.content.empty() || RequestText::isStory(reading.content))
        return {};
    std::string others;
    // A time that is only half understood still hints at what is asked.
    const auto moment = SpokenPhrase::read(reading.content, around);
    const std::string once = SeriesWords::read(reading.content).rest;
    const auto end = TimeWords::atEnd(once, around);
    const auto last = end ? SpokenPhrase::read(end->time, around) : std::nullopt;
    return {.hasMoment = (moment && moment->hasTime) || (last && last->hasTime),
        .hasDay = SpokenDays::find(reading.content, around, others).has_value(),
        .hasLength = SpokenLength::read(reading.content) || (end && SpokenLength::read(end->time)),
        .hasNewTime = end && newTime.find(once),
        .hasDuty = moment && duty.find(reading.content)};
}

Found likeliest(const RequestReading& reading, const RuleSurroundings& around)
{
    for (const RequestKind* kind : RequestEvidence::ranked(reading, hintsIn(reading, around))) {
        if (auto request = kind->read(reading, around))
            return request;
    }
    return std::nullopt;
}

Found likeliest(const std::string& core, const RuleSurroundings& around)
{
    return likeliest(readingOf(core), around);
}

using SkillReader = Found (*Skill::*)(const std::string&, const RuleSurroundings&);

/// What the first skill makes of it that takes it for its own.
Found bySkills(SkillReader reader, const std::string& words, const RuleSurroundings& around)
{
    for (const Skill* skill : SkillTable::all()) {
        auto request = skill->*reader ? (skill->*reader)(words, around) : std::nullopt;
        if (request)
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
    if (SkillTable::cues().at(words, 0, CuePlace::start))
        return std::nullopt;
    int reasons = 0;
    for (std::size_t index = 0; index + 1 < words.size() && reasons < mostReasons; ++index) {
        if (!words.endsClause(index))
            continue;
        ++reasons;
        const std::string rest = RequestText::withoutOpening(words.said(index + 1, words.size()));
        if (!SkillTable::cues().at(RequestWords(rest), 0, CuePlace::head))
            continue;
        // A bare "done" is about what was said before it.
        if (readingOf(rest).content.empty())
            continue;
        if (auto request = bySkills(&Skill::readPlain, rest, around))
            return request;
        if (auto request = likeliest(rest, around))
            return request;
    }
    return std::nullopt;
}

/// The words of a clause that name one thing: "the dentist" of "the dentist", "I don't need the dentist any more",
/// "I can't do the dentist tomorrow".
std::string thingNamed(const RequestReading& clause, const RuleSurroundings& around)
{
    static const Pattern thing("^(?:the|my|our|his|her|their)(?: \\S+){1,3}$", Pattern::caseless);
    if (clause.hasAny(Cue::hinders)) {
        const auto moved = likeliest(clause, around);
        return moved && moved->wish ? moved->wish->title : std::string();
    }
    const bool isThing = thing.find(clause.content) || (clause.hasAny(Cue::names) && !clause.hasAny(Cue::tells));
    return isThing && !clause.isVerbatim ? clause.content : std::string();
}

/// What is asked of a thing that was named before: "can we make that friday?"
Found askedOf(const std::string& thing, std::string rest, const RuleSurroundings& around)
{
    static const Pattern pronoun("\\b(?:(?:that|this) one|it|that|this|them)\\b", Pattern::caseless);
    const auto match = pronoun.find(rest);
    if (!match || !SkillTable::cues().at(RequestWords(rest), 0, CuePlace::head) || readingOf(rest).isVerbatim)
        return std::nullopt;
    return likeliest(rest.replace(match->range.start, match->range.end - match->range.start, thing), around);
}

/// Another time for what cannot stay as it is: "remind me on tuesday at 9 am instead". Without a name, "it" is meant.
Found elsewhere(const std::string& thing, const std::string& rest, const RuleSurroundings& around)
{
    const RequestReading reading = readingOf(rest);
    for (const Skill* skill : SkillTable::all()) {
        auto request = skill->readElsewhere ? skill->readElsewhere(thing, reading, rest, around) : std::nullopt;
        if (request)
            return request;
    }
    auto request = likeliest(rest, around);
    return request && request->about && !thing.empty() ? Found(request->about(thing)) : std::move(request);
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
        const RequestReading first = readingOf(words.said(0, index + 1));
        const std::string thing = thingNamed(first, around);
        const std::string rest = RequestText::withoutOpening(words.said(index + 1, words.size()));
        auto request = thing.empty() ? std::nullopt : askedOf(thing, rest, around);
        if (!request && first.hasAny(Cue::hinders))
            request = elsewhere(thing, rest, around);
        if (request)
            return request;
    }
    return std::nullopt;
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
        return request && request->wish && !request->wish->title.empty() ? request : std::nullopt;
    }
    return std::nullopt;
}

/// The likeliest that looks something up.
Found lookedUp(const std::string& core, const RuleSurroundings& around)
{
    const RequestReading reading = readingOf(core);
    for (const RequestKind* kind : RequestEvidence::ranked(reading, hintsIn(reading, around))) {
        auto request = kind->read(reading, around);
        if (request && CarefulStep::onlyLooksUp(*request, around))
            return request;
    }
    for (const Skill* skill : SkillTable::all()) {
        auto request = skill->readQuestion ? skill->readQuestion(reading, around) : std::nullopt;
        if (request)
            return request;
    }
    return std::nullopt;
}

/// "Call a taxi tonight at 5" may well be meant for somebody who can do that.
Request askedFirst(Request statement)
{
    statement.answer = [statement](RequestMemory memory, const RuleSurroundings& around) {
        return CarefulStep::take(statement.answer(memory, around), statement, RequestMood::musing, memory);
    };
    return statement;
}

Found readClauses(const std::string& core, const RuleSurroundings& around)
{
    for (const auto reader : {namedFirst, beforeReason, afterReason}) {
        if (auto request = reader(core, around))
            return request;
    }
    return likeliest(core, around);
}

} // namespace

Found RequestReader::readSaid(std::string_view words, const RuleSurroundings& around)
{
    return bySkills(&Skill::readSaid, std::string(words), around);
}

Found RequestReader::read(std::string_view words, const RuleSurroundings& around)
{
    const std::string core = WishFirst::of(std::string(words), around);
    if (auto request = bySkills(&Skill::readPlain, core, around))
        return request;
    if (auto request = readClauses(core, around))
        return request;
    auto statement = bySkills(&Skill::readStatement, core, around);
    const bool isDoubtful = statement && !statement->isForOthers && readingOf(core).has(CommonCues::foreign);
    return isDoubtful ? askedFirst(*std::move(statement)) : statement;
}

Found RequestReader::readQuestion(std::string_view words, const RuleSurroundings& around)
{
    auto request = read(words, around);
    if (request && CarefulStep::onlyLooksUp(*request, around))
        return request;
    auto lookUp = lookedUp(std::string(words), around);
    return lookUp ? lookUp : request;
}

} // namespace quorvell
