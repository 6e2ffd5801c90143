// SPDX-License-Identifier: MIT
#include "Understanding/RequestEvidence.h"

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

using enum RequestKind;

struct Weight {
    RequestKind kind;
    int weight;
};

/// What a cue says for (or, below 0, against) each kind.
struct CueWeights {
    Cue cue;
    std::array<Weight, 8> weights; ///< Those behind the last one stay 0.
};

constexpr CueWeights cueWeights[] = {
    {Cue::definite, {{{moveEvent, 1}, {cancelEvent, 1}}}},
    {Cue::indefinite, {{{addEvent, 1}, {moveEvent, -1}}}},
    {Cue::pronoun, {{{readNote, 1}, {moveEvent, 1}}}},
    {Cue::remind, {{{remind, 9}}}},
    {Cue::wake, {{{remind, 9}}}},
    {Cue::remember, {{{remember, 9}}}},
    {Cue::know, {{{remember, 9}}}},
    {Cue::keep, {{{keepNote, 5}}}},
    {Cue::make, {{{keepNote, 2}, {addEvent, 2}, {remind, 1}, {moveEvent, 2}}}},
    {Cue::enter, {{{keepNote, 2}, {addEvent, 3}, {remind, 1}}}},
    {Cue::own, {{{addEvent, 2}}}},
    {Cue::also, {{{addAnother, 4}}}},
    {Cue::schedule, {{{addEvent, 5}, {remind, 1}}}},
    {Cue::find, {{{findNote, 5}, {findTime, 2}}}},
    {Cue::read, {{{readNote, 5}, {listReminders, 2}, {listEvents, 2}, {findNote, 1}}}},
    {Cue::open, {{{readNote, 3}, {openNotebook, 3}, {listEvents, 2}}}},
    {Cue::show, {{{findNote, 2}, {listReminders, 2}, {listEvents, 2}, {openNotebook, 3}, {findTime, 1}}}},
    {Cue::tell, {{{listReminders, 1}, {listEvents, 1}, {remind, 2}}}},
    {Cue::cancel, {{{cancelEvent, 5}, {finishReminder, 3}, {deleteNote, 5}, {findNote, -5}, {nextEvent, -4}}}},
    {Cue::move, {{{moveEvent, 5}, {putOffReminder, 3}, {nextEvent, -4}}}},
    {Cue::earlier, {{{moveEvent, 5}}}},
    {Cue::unable, {{{moveEvent, 5}}}},
    {Cue::delay, {{{moveEvent, 4}, {putOffReminder, 4}}}},
    {Cue::later, {{{putOffReminder, 6}}}},
    {Cue::done, {{{finishReminder, 5}}}},
    {Cue::what, {{{listReminders, 2}, {listEvents, 2}, {nextEvent, 1}, {findTime, 1}, {readNote, 1}}}},
    {Cue::when, {{{findTime, 2}, {nextEvent, 2}}}},
    {Cue::where, {{{findNote, 4}}}},
    {Cue::have, {{{listEvents, 2}, {findNote, 2}, {listReminders, 1}, {findTime, 1}}}},
    {Cue::there, {{{listEvents, 2}, {findTime, 1}, {listReminders, 1}}}},
    {Cue::any, {{{listEvents, 2}, {findNote, 2}, {findTime, 1}, {listReminders, 1}}}},
    {Cue::wrote, {{{readNote, 4}, {findNote, 4}}}},
    {Cue::say, {{{readNote, 4}}}},
    {Cue::topic, {{{findNote, 2}, {readNote, 2}}}},
    {Cue::note,
        {{{keepNote, 2}, {findNote, 4}, {readNote, 2}, {deleteNote, 2}, {cancelEvent, -5}, {moveEvent, -5},
            {addEvent, -4}, {finishReminder, -3}}}},
    {Cue::notes,
        {{{keepNote, 2}, {findNote, 4}, {readNote, 1}, {deleteNote, 2}, {cancelEvent, -5}, {moveEvent, -5},
            {addEvent, -4}, {listEvents, -4}}}},
    {Cue::newest, {{{readNote, 4}, {deleteNote, 2}, {cancelEvent, -5}}}},
    {Cue::notebook, {{{openNotebook, 3}, {findNote, 3}, {keepNote, 2}, {listEvents, -4}, {addEvent, -4}}}},
    {Cue::reminder,
        {{{remind, 3}, {finishReminder, 2}, {putOffReminder, 3}, {listReminders, 2}, {addEvent, -4}, {moveEvent, -6},
            {cancelEvent, -4}, {findNote, -4}}}},
    {Cue::reminders,
        {{{listReminders, 5}, {finishReminder, 2}, {addEvent, -4}, {listEvents, -4}, {cancelEvent, -4}, {findNote, -4},
            {readNote, -4}, {keepNote, -4}}}},
    {Cue::calendar,
        {{{addEvent, 3}, {listEvents, 4}, {moveEvent, 1}, {cancelEvent, 1}, {nextEvent, 1}, {keepNote, -4},
            {readNote, -4}, {findNote, -4}}}},
    {Cue::day, {{{listEvents, 3}}}},
    {Cue::event, {{{addEvent, 2}, {moveEvent, 1}, {cancelEvent, 1}, {listEvents, 1}}}},
    {Cue::occasion, {{{addEvent, 2}, {moveEvent, 1}, {cancelEvent, 1}, {nextEvent, 2}}}},
    {Cue::free, {{{findTime, 4}, {listEvents, -3}, {nextEvent, -4}}}},
    {Cue::time, {{{findTime, 3}, {listEvents, -3}}}},
    {Cue::busy, {{{listEvents, 3}}}},
    {Cue::next, {{{nextEvent, 5}}}},
    {Cue::further, {{{nextEvent, 4}}}},
    {Cue::pending, {{{listReminders, 5}, {listEvents, -2}}}},
    {Cue::instead, {{{moveEvent, 2}, {putOffReminder, 2}}}},
    {Cue::foreign,
        {{{cancelEvent, -6}, {moveEvent, -6}, {listEvents, -4}, {findTime, -6}, {addEvent, -6}, {finishReminder, -6},
            {deleteNote, -6}}}},
};

struct Weights {
    std::array<int, static_cast<std::size_t>(RequestKind::count)> of{};

    int& operator[](RequestKind kind) { return of[static_cast<std::size_t>(kind)]; }
};

Weights weighed(const RequestReading& reading, const TimeHints& hints)
{
    Weights weights;
    for (const CueWeights& row : cueWeights) {
        if (!reading.has(row.cue))
            continue;
        for (const Weight& weight : row.weights)
            weights[weight.kind] += weight.weight;
    }
    if (hints.hasMoment) {
        weights[remind] += 1;
        weights[addEvent] += 2;
        weights[moveEvent] += 2;
        weights[putOffReminder] += 1;
        weights[listEvents] -= 1;
    }
    if (hints.hasDay) {
        weights[listEvents] += 1;
        weights[findTime] += 1;
    }
    if (hints.hasDuty)
        weights[remind] += 2;
    if (hints.hasNewTime) {
        weights[moveEvent] += 3;
        weights[putOffReminder] += 2;
    }
    if (hints.hasLength) {
        weights[findTime] += 3;
        weights[moveEvent] += 2;
        weights[putOffReminder] += 1;
    }
    return weights;
}

} // namespace

std::vector<RequestKind> RequestEvidence::ranked(const RequestReading& reading, const TimeHints& hints)
{
    Weights weights = weighed(reading, hints);
    std::vector<RequestKind> kinds;
    for (std::size_t index = 0; index < weights.of.size(); ++index) {
        if (weights.of[index] >= enough)
            kinds.push_back(static_cast<RequestKind>(index));
    }
    std::ranges::stable_sort(
        kinds, [&](RequestKind left, RequestKind right) { return weights[left] > weights[right]; });
    return kinds;
}

} // namespace quorvell
