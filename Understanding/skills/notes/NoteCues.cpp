// SPDX-License-Identifier: MIT
#include "Understanding/skills/notes/NoteCues.h"

namespace quorvell {

namespace {

using Cues = NoteCues;
constexpr auto start = CuePlace::start;
constexpr auto head = CuePlace::head;
constexpr auto anywhere = CuePlace::anywhere;

constexpr CueWords table[] = {
    {Cues::keep, head,
        "get this written down|get that written down|file this|file that|file it|keep a "
        "record|keep|save|store|record|note down|jot|jot down|jot this down|jot "
        "that down|jot it down|write|"
        "write down|write this down|write that down|write it down|write up|scribble|scribble down|scribble this down|"
        "put this on paper|put that on paper|put it on paper|put on paper|scrawl|put down|put this down|put that "
        "down|put it down|get this down|get that down|take down|take this down|"
        "take that down|take it down|make note|log|log that|note this|note it down|note this down|note that down|pop "
        "down|commit to paper|memorise|memorize|type up|type out|type|leave a note"},
    {Cues::keep, start, "note|memo|note to self|new note|for my records|for our records|for my files|for the files"},
    {Cues::where, head,
        "where|whereabouts|where is|where are|where was|where do i find|where can i find|where have i got"},
    {Cues::wrote, head,
        "did i write|did i write down|did i note|did i note down|did i say|did i save|did i keep|did i put|did i jot "
        "down|did i put down|did i record|did i store|have i written|have i written down|have i noted|have i noted "
        "down|have i saved|have i kept|have i recorded|have i put|have i put down|i wrote|i wrote down|i said|i "
        "noted|i noted down|i saved|i put down|i kept|i put|i have written|i have written down|i have noted|i have "
        "saved|i jotted|i jotted down|i told you|did i tell you|have i told you|have i said|i recorded|written|written "
        "down|noted|noted down|mentioned|did i mention|have i mentioned|do i know|did i scribble|did i scribble down"},
    {Cues::say, anywhere, "say|says|it say|contain"},
    {Cues::note, anywhere, "note|memo|jotting|entry about"},
    {Cues::notes, anywhere, "notes|memos|jottings|notepad|note pad"},
    {Cues::newest, head,
        "last note|latest note|newest note|most recent note|last thing i wrote|last thing i wrote down|last memo|last "
        "thing i noted|last thing i saved"},
    {Cues::notebook, anywhere, "notebook|note book"},
};

} // namespace

std::span<const CueWords> NoteCues::rows()
{
    return table;
}

} // namespace quorvell
