// SPDX-License-Identifier: MIT
#include "Understanding/words/DeedWords.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/words/RequestText.h"
#include "Understanding/words/WordRewriting.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <string_view>
#include <utility>

namespace quorvell {

namespace {

/// What a verb is done to.
struct Verbal {
    /// Bits, so that a row of verbs can hold for several.
    enum Matter : std::uint8_t {
        event = 1,
        reminder = 2,
        alarm = 4,
        list = 8,
        item = 16, ///< "Eggs from my grocery list".
        day = 32, ///< The calendar, or what is put into it by that word.
        anything = 64, ///< Nothing of ours is named.
    };
};
using Matter = Verbal::Matter;

enum class Deed : std::uint8_t { make, remove, read, move };

struct VerbRow {
    Deed deed;
    int matters; ///< At which not every skill knows the verb by itself.
    std::string_view verbs; ///< Between bars.
};

constexpr auto rows = std::to_array<VerbRow>({
    {Deed::make, Matter::event | Matter::day | Matter::reminder | Matter::alarm | Matter::list | Matter::item,
        "key in|feed in|feed|input|type in|punch in|pop in|stick in|chalk in|throw in|draft|compose|generate|initiate|"
        "form|establish|launch|introduce|place|upload|post|ready|allocate|assign|apply|append|attach|capture|fix up|"
        "fill in|put up|build|construct|develop|insert in|compile|fit in|enter in|begin|activate|write in"},
    {Deed::make, Matter::day | Matter::reminder | Matter::alarm | Matter::list | Matter::item,
        "fix|arrange|organize|organise|prepare"},
    {Deed::make, Matter::reminder | Matter::alarm | Matter::list | Matter::item,
        "book|schedule|enter|register|log|mark down|save|store|keep|note down|jot down|write down|put down|pencil in|"
        "slot in|plan|block|record|reserve|squeeze in|put in"},
    {Deed::make, Matter::alarm | Matter::list, "put|add|insert|include|note"},
    {Deed::make, Matter::reminder, "insert|include|note"},
    {Deed::make, Matter::reminder | Matter::alarm, "get me|give me"},
    {Deed::make, Matter::item, "make|create|set|set up|start|new|give me|get me|get|push"},
    {Deed::remove,
        Matter::event | Matter::day | Matter::reminder | Matter::alarm | Matter::list | Matter::item | Matter::anything,
        "discard|void|revoke|omit|eliminate|exclude|nix|abort|abolish|purge|annul|retract|rescind|rid me of|"
        "do away with|unschedule|unset"},
    {Deed::remove, Matter::event | Matter::day | Matter::reminder | Matter::alarm | Matter::list | Matter::item,
        "cut out|cut|axe|kill|destroy|terminate|withdraw|disregard|reject|decline|leave out|take away|strike off"},
    {Deed::remove, Matter::reminder | Matter::alarm | Matter::list | Matter::item,
        "scratch|strike|call off|bin|trash|ditch|dump|throw out|throw away|cross off|rub out|take out|forget about|"
        "forget|drop|scrap|lose"},
    {Deed::remove, Matter::alarm, "wipe out|clear off|clear out|wipe|erase"},
    {Deed::remove, Matter::reminder | Matter::list | Matter::item, "dismiss|skip|take off"},
    {Deed::remove, Matter::event | Matter::day, "dump|cross off|ditch"},
    {Deed::remove, Matter::day, "get rid of"},
    {Deed::read, Matter::day | Matter::reminder | Matter::alarm | Matter::list,
        "retrieve|update me on|update me about|update me with|brief me on|fill me in on|report on|report|recall|browse|"
        "announce|inform me about|inform me of|inform me on|provide me with|provide me|provide|present me with|present|"
        "summarize|summarise|sum up|explain|describe|load|access|enumerate|itemize|narrate|relay|communicate|know "
        "about|"
        "know|output|elaborate on|elaborate|educate me on|shout out"},
    {Deed::read, Matter::alarm, "get|find|search|run through|look through|go through|look up"},
    {Deed::read, Matter::list, "verify|confirm|open up"},
    {Deed::move, Matter::event | Matter::day | Matter::reminder | Matter::alarm | Matter::anything,
        "edit|modify|amend|revise|alter|transfer|bump|advance|replan|rebook|convert|swap|reset|rearrange"},
    {Deed::move, Matter::alarm, "set|put"},
});

constexpr std::size_t mostVerbWords = 4;

/// The rows of a verb, in their order.
const std::multimap<std::string, const VerbRow*, std::less<>>& rowsByVerb()
{
    static const auto table = [] {
        std::multimap<std::string, const VerbRow*, std::less<>> byVerb;
        for (const VerbRow& row : rows) {
            for (std::size_t start = 0; start < row.verbs.size();) {
                const std::size_t end = std::min(row.verbs.find('|', start), row.verbs.size());
                byVerb.emplace(row.verbs.substr(start, end - start), &row);
                start = end + 1;
            }
        }
        return byVerb;
    }();
    return table;
}

const std::string determiners = "(?:(?:an?|one|1|the|my|our|this|that|these|those|any|some|all(?: of)?|every|each|new"
                                "|another|whole|entire|following|existing) )*";
/// In front of a noun; a link is none of it.
const std::string attribute = "(?!(?:up|out|in|on|off|to|for|from|of|at|with|and|that|me|us|it|not|as|by|down|back|over"
                              "|through|into|onto|about|is|are|was|add|remind)\\b)[\\w:.'’-]+ ";

struct MatterForm {
    MatterForm(Matter of, const std::string& expression)
        : matter(of)
        , form(expression, Pattern::caseless)
    {
    }

    Matter matter;
    Pattern form;
};

Matter matterOf(const std::string& object)
{
    static const std::string noun = "^" + determiners + "(?:" + attribute + "){0,3}?";
    static const std::string place = "^(?!sure\\b)\\S.* (?:to|in|into|on|onto|under|from|off|off of|out of) "
                                     "(?:my |the |our |a |this |that |your )?(?:[\\w'’-]+ ){0,3}";
    static const std::deque<MatterForm> forms = [] {
        std::deque<MatterForm> all;
        all.emplace_back(Matter::list,
            noun + "(?:to.?do )?(?:check)?lists?\\b(?! items?\\b| entr|['’]s)(?!.* (?:my|the) notes?\\b)");
        all.emplace_back(Matter::alarm, noun + "(?:alarms?|timers?)\\b(?! system| company| clock)");
        all.emplace_back(Matter::reminder, noun + "reminders?\\b");
        all.emplace_back(Matter::item, place + "(?:\\w*lists?|groceries)\\b");
        all.emplace_back(Matter::day, place + "(?:calendar|schedule|agenda|diary)\\b");
        all.emplace_back(Matter::day, noun + "(?:calendar|schedule|agenda|diary|events|meetings|appointments)\\b");
        all.emplace_back(Matter::event,
            noun
                + "(?:meeting|appointment|event|appt|calendar entry|class|party|lunch|dinner|breakfast|conference"
                  "|interview|birthday)\\b");
        return all;
    }();
    const auto match =
        std::ranges::find_if(forms, [&](const MatterForm& row) { return row.form.find(object).has_value(); });
    return match != forms.end() ? match->matter : Matter::anything;
}

/// "From my list", and not "to my list".
const Pattern& leavingWords()
{
    static const Pattern leaving("\\b(?:from|off|out of)\\b", Pattern::caseless);
    return leaving;
}

std::string_view maker(std::string_view verb, Matter matter, const std::string& object)
{
    static const Pattern isThere("^(?:the (?!following)|my|our|this|that|these|those|all|every|each|your)\\b"
                                 "|\\b(?:as|done|completed?|finished|off|louder|quieter)\\b",
        Pattern::caseless);
    static const Pattern duties("\\b(?:to.?do|tasks?|chores?|errands?|jobs?|work)\\b", Pattern::caseless);
    static const Pattern neverDuty("^(?:(?:key|feed|type|punch|slot|put|enter|insert|stick|throw|fill) in|input|append"
                                   "|enter|(?:put|note|jot|write|mark) down|put up|log)$");
    // "Fix the roof on my to do list" is what is to be done.
    if (matter == Matter::item)
        return leavingWords().find(object) || (duties.find(object) && !neverDuty.find(verb)) ? "" : "add";
    if (matter == Matter::day)
        return "add";
    if (isThere.find(object))
        return "";
    return matter == Matter::list ? "create" : matter == Matter::event ? "add" : "set";
}

/// "Drop me a reminder", "report a meeting": not what is there.
bool isNew(const std::string& object)
{
    static const Pattern article("^(?:me |us )?(?:an?|one|new|another)\\b", Pattern::caseless);
    return article.find(object).has_value();
}

std::string_view remover(Matter matter, const std::string& object)
{
    static const Pattern goesOn("\\b(?:to|into|onto) (?:my|the|our)\\b", Pattern::caseless);
    if (matter == Matter::item)
        return goesOn.find(object) && !leavingWords().find(object) ? "" : "remove";
    return isNew(object) ? "" : "delete";
}

/// Where something goes to another time: "to 6:45", "to saturday".
std::string_view mover(const VerbRow& row, const std::string& object)
{
    static const Pattern toTime(
        "^(?:the|my|our|this|that)\\b.* (?:to|for|till|until) (?:the |next |this |coming )?"
        "(?:\\d|noon|midnight|half|quarter|today|tomorrow|week|month|(?:mon|tues|wednes|thurs|fri|satur|sun)day"
        "|(?:jan|feb|mar|apr|may|jun|jul|aug|sep|oct|nov|dec)|(?:one|two|three|four|five|six|seven|eight|nine|ten"
        "|eleven|twelve)\\b)",
        Pattern::caseless);
    static const Pattern others("\\b(?:lists?|notes?|groceries|account|money)\\b", Pattern::caseless);
    // "Set my 6:30 alarm to 6:45": it has an hour already.
    static const Pattern hasHour("^(?:my|the) (?:\\S+ )?\\d", Pattern::caseless);
    const bool isMoved = toTime.find(object) && !others.find(object);
    return isMoved && (row.matters != Matter::alarm || hasHour.find(object)) ? "move" : "";
}

std::string_view plainVerb(const VerbRow& row, std::string_view verb, Matter matter, const std::string& object)
{
    if ((row.matters & matter) == 0)
        return "";
    switch (row.deed) {
    case Deed::make:
        return maker(verb, matter, object);
    case Deed::remove:
        return remover(matter, object);
    case Deed::read:
        return isNew(object) ? "" : "show me";
    case Deed::move:
        return mover(row, object);
    }
    return "";
}

/// The request without its opening words, the verb of the table in front; as it was where there is none.
std::string withPlainVerbFirst(const std::string& request)
{
    std::size_t end = 0;
    std::string verb;
    std::string longest;
    for (std::size_t count = 0; count < mostVerbWords && end != std::string::npos; ++count) {
        end = request.find(' ', end == 0 ? 0 : end + 1);
        const std::string first = lowerCased(request.substr(0, end));
        if (end != std::string::npos && rowsByVerb().contains(first))
            longest = first;
    }
    if (longest.empty())
        return request;
    const std::string object = trimmed(request.substr(longest.size()));
    const Matter matter = matterOf(object);
    const auto [first, last] = rowsByVerb().equal_range(longest);
    for (auto row = first; row != last; ++row) {
        const std::string_view plain = plainVerb(*row->second, longest, matter, object);
        if (!plain.empty())
            return std::string(plain) + " " + object;
    }
    return request;
}

/// "Eggs delete", "meeting tomorrow 3 pm set", "milk remove from my list".
std::string withVerbInFront(const std::string& request)
{
    static const std::string sentence =
        "(?!.*\\b(?:i|you|we|he|she|they|it|is|are|was|were|be|been|not|don['’]?t|did|do|does|has|have|had|how|why|that"
        "|then|and|should|please|to(?!.?do))\\b)"
        "(?!(?:delete|remove|cancel|add|put|set|make|create|show|tell|read|open|find|what|when|where|who|which|if|after"
        "|before|any|no|never|undo|clear|move|change|start|stop|book|schedule|turn|remind|wake|note|write|list)\\b)";
    static const std::string please = "(?: (?:please|now|for me))*[.! ]*$";
    static const WordRewriting turned(std::deque<std::pair<std::string, std::string>>{
        {"^" + sentence + "((?:\\S+ ){0,7}\\S+),? (?:delete|remove|cancel|erase|discard)" + please, "delete $1"},
        {"^" + sentence + "((?:\\S+ ){0,7}\\S+),? (?:delete|remove|erase|cut) ((?:from|off) .*(?:list|groceries))"
                + please,
            "remove $1 $2"},
        {"^" + sentence
                + "((?:\\S+ ){0,8}\\S*(?:\\d|[ap]\\.?m|day|tomorrow|noon|alarm|meeting|appointment|event)),? "
                  "(set|add|create|schedule|book|make)"
                + please,
            "$2 $1"},
        {"^" + sentence
                + "((?:my |the |all )?(?:[\\w'’-]+ ){0,2}(?:calendar|schedule|agenda|events|meetings|alarms"
                  "|reminders|lists?)(?: for)?(?: today| tomorrow)?),? (?:show|display|open|read|tell|check)(?: me)?"
                + please,
            "show me $1"},
    });
    return turned.first(request);
}

} // namespace

std::string DeedWords::plain(const std::string& words)
{
    const std::string request = RequestText::withoutOpening(words);
    const std::size_t place = words.rfind(request);
    if (request.empty() || place == std::string::npos)
        return words;
    return words.substr(0, place) + withVerbInFront(withPlainVerbFirst(request)) + words.substr(place + request.size());
}

} // namespace quorvell
