// SPDX-License-Identifier: MIT
// What a few words of a request hint at, however they were put.
#pragma once

#include <cstdint>

namespace quorvell {

enum class Cue : std::uint8_t {
    filler, ///< Says nothing: "me", "the", "a".
    definite, ///< "the", "my": it is there already.
    indefinite, ///< "a", "another": it is not there yet.
    all, ///< "all my": not only one of them.
    pronoun, ///< "it", "that".
    // What is to be done
    remind,
    wake,
    remember,
    know,
    keep,
    make,
    enter, ///< As make, and for nothing that is there already.
    own, ///< "I have", "I've got"
    schedule,
    find,
    read,
    open,
    show,
    tell,
    cancel,
    move,
    unable, ///< "I can't do": it cannot stay as it is.
    delay, ///< A change of time that fits events and reminders alike.
    earlier, ///< Of a change of time: not later.
    later,
    done,
    also,
    // What is asked
    what,
    when,
    where,
    have, ///< "do I have"
    there, ///< "is there"
    any,
    wrote, ///< "did I write"
    say, ///< "what does it say"
    topic, ///< "about"
    // What it is about
    note,
    notes,
    newest,
    notebook,
    reminder,
    reminders,
    calendar,
    day, ///< "my week"
    event, ///< Says that it is one: "an event"
    occasion, ///< Names one: "lunch"
    free,
    once, ///< "only this time": not every time.
    time, ///< "time", as in "when do I have time"
    busy,
    next,
    further, ///< "after that": behind what was just told.
    pending, ///< "to do", "to remember"
    instead,
    foreign, ///< What this service has nothing to do with: "file", "window"
    count, ///< How many there are; none of them.
};

} // namespace quorvell
