// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/reading/EventTitle.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"

#include <cctype>

namespace quorvell {

namespace {

/// "Practice on at King's Park": the first of two leading words that did not stand together led to the time.
std::string withoutLoose(std::string rest, std::string_view words)
{
    static const Pattern pair("\\b((?:on|at|in|for|from|to|of|by|until|till|between|is|are|will be|begins?|starts?) "
                              "(?=(on|at|in|for|from|to|of|by|with|about|and)\\b))",
        Pattern::caseless);
    const std::string said = " " + lowerCased(words) + " ";
    std::size_t from = 0;
    while (const auto match = pair.find(rest, from)) {
        const std::string both = " " + lowerCased(match->texts[0] + match->texts[1]) + " ";
        from = match->range.end;
        if (said.find(both) != std::string::npos)
            continue;
        rest.erase(match->range.start, match->range.end - match->range.start);
        from = match->range.start;
    }
    return rest;
}

/// "An all day event on friday called inventory"
std::string afterCalled(const std::string& name)
{
    static const Pattern called(
        "^(?:(?:an?|the|new|my|all[- ]day|whole[- ]day|full[- ]day|calendar|recurring|repeating|"
        "for|on|at)\\s+)*(?:event|entry|meeting|appointment|reminder)?\\s*(?:(?:for|on|at|in)\\s+)*"
        "(?:called|named|titled|entitled|labell?ed|by the name of|with (?:the )?(?:title|name))\\s+",
        Pattern::caseless);
    const auto match = called.find(name);
    return match ? name.substr(match->range.end) : name;
}

/// "Event: offsite", "calendar event for lunch", but "event planning" and "event with mom".
std::string afterKind(const std::string& name)
{
    static const Pattern kind(
        "^(?:(?:an?|the|new|my|calendar|repeating|recurring|regular|all[- ]day)\\s+)*(?:event|calendar "
        "entry|entry)\\s*(?:[:,-]\\s*|(?:for|called|about|of|to)\\s+|\\s+)(?!(?:with|planning|planner|"
        "management|manager|space|organi[sz]\\w+|team|committee|at|in|on|from)\\b)(?=\\S)"
        "|^(?:repeating|recurring)\\s+(?=\\S)",
        Pattern::caseless);
    const auto match = kind.find(name);
    return match ? name.substr(match->range.end) : name;
}

/// "Job interview put it in", "superbowl party, don't forget": what they said to us behind the name.
std::string withoutWishes(const std::string& name)
{
    static const std::string joint = "[,;.!]*\\s+(?:(?:and|so|please|kindly|then|just|also|could you|can you) )*";
    static const Pattern wish(joint
            + "(?:(?:put|add|enter|mark|save|note|schedule|write|pop|stick|jot)(?: down)? (?:it|that|this|the same)(?: "
              "(?:in|down|on there|on it|there|up|please|for me))*|do(?:n['’]?t| not) (?:let me )?forget(?: (?:it|that|"
              "about it))?|(?:tell|let|inform|warn) me (?:know )?(?:if|when|whether)\\b.*|"
              "(?:set|make) (?:it|that|this)(?: to)? (?:repeat(?:ing)?|recur(?:ring)?|come back)\\b.*|"
              "(?:please|kindly) (?:add|note|save|schedule|put|update|log|enter)(?: (?:it|that|this|down))*|"
              "(?:does|will|would|is there|do) (?:(?:it|that|this|anything|i|any) )*(?:have )?(?:an? "
              ")?(?:clash|conflict|"
              "overlap)\\w*\\b.*|(?:make sure|see that) (?:that )?(?:i|we) (?:do[ n]['’]?o?t|will not) forget\\b.*|"
              "(?:update|add to) (?:my |the )?(?:calendar|schedule)(?: .*)?)[.!]*$"
              "|\\s+(?:ish|sharp|o['’]?clock|yearly|annually|too|as well|also)$",
        Pattern::caseless);
    static const Pattern commas("\\s*,(?:\\s*,)*|(?:\\s*[.;,]){2,}(?=\\s)|\\s+[.;](?=\\s)");
    return commas.replaceAll(wish.replaceAll(name, ""), ",");
}

std::string withoutQuotes(std::string name)
{
    static const Pattern quoted("(?:^|(?<=\\s))'([^']+)'(?=$|[\\s,.])");
    while (const auto match = quoted.find(name))
        name = name.substr(0, match->range.start) + match->texts[0] + name.substr(match->range.end);
    return name;
}

/// "Picnic date december 5 time 3 pm place park", "duration 2 hours", "17:30 hrs": labels are no part of a name.
std::string withoutLabels(const std::string& text)
{
    static const Pattern length(
        "\\b(?:for )?(?:an? )?duration(?: of|:)? (?=\\d|an? |one |two |half )", Pattern::caseless);
    static const Pattern date(
        "\\b(?:(?:(?:at|on|for) (?:the )?date(?: is|:)?|date:) (?=\\w)|(?<!dinner )(?<!lunch )(?<!play )(?<!movie "
        ")(?<!night )(?<!due )date(?: is)? (?=\\d|(?:jan|feb|mar|apr|may|jun|jul|aug|sep|oct|nov|dec)))",
        Pattern::caseless);
    static const Pattern hour("\\b(?:(?:at|on) )?(?:the )?(?:time|starts?|starting|begins?|beginning)(?: is| at|:)? "
                              "(?=\\d{1,2}(?:[:.]\\d{2})?"
                              " ?(?:[ap]\\.?m|$|[ ,.](?!\\d|[a-z]+ber|jan|feb|mar|apr|may|jun|jul|aug|st|nd|rd|th)))",
        Pattern::caseless);
    static const Pattern place(
        "(?<=[\\dm,] )(?:at )?(?:the )?(?:place|location|venue)(?: is|:)? (?=[a-z])", Pattern::caseless);
    static const Pattern hours("(?<=[:.]\\d\\d) ?(?:hrs|hours|h)\\b"
                               "|(?<=\\dst|\\dnd|\\drd|\\dth) (?:night|evening|morning|afternoon)(?= (?:at )?\\d)",
        Pattern::caseless);
    const std::string lasting = hours.replaceAll(length.replaceAll(text, "for "), "");
    std::string timed = hour.replaceAll(date.replaceAll(lasting, "on "), "at ");
    return timed == lasting ? timed : place.replaceAll(timed, "at "); // What is labelled once is labelled.
}

} // namespace

std::string EventTitle::withoutForms(std::string_view words)
{
    static const Pattern form("[\\[({<]\\s*(?:the\\s+)?(date|time|day|when|where|place|location|venue|event|title|name|"
                              "person)\\s*(?:[:=]\\s*([^\\])}>]*))?[\\])}>]",
        Pattern::caseless);
    std::string text(words);
    while (const auto match = form.find(text)) {
        const std::string value = trimmed(match->texts[1]);
        const bool isBareHour = lowerCased(match->texts[0]) == "time" && !value.empty()
            && std::isdigit(static_cast<unsigned char>(value.front())) != 0;
        text = text.substr(0, match->range.start) + " " + (isBareHour ? "at " : "") + value + " "
            + text.substr(match->range.end);
    }
    text = withoutLabels(text);
    static const Pattern blanks("\\s{2,}");
    return trimmed(blanks.replaceAll(text, " "));
}

std::string EventTitle::from(std::string_view rest, std::string_view words)
{
    static const Pattern edges(
        "^(?:(?:an?|the|my|for|called|named|about|with the title|(?:i|we)(?:['’]ve| have)(?: "
        "got| been (?:invited|asked) to| to (?:go to|attend|be at))?|(?:i|we)(?:['’]ll| will) (?:be|have)(?: "
        "on)?|is|are|"
        "(?:i['’]m|i am|we['’]re|we are) (?:on|having|going to|at)|"
        "(?:to )?have (?=an? )|(?:(?:i|we) )?(?:want|would like|plan|am going|are going|need) to (?:have|attend|go "
        "to|be at)|there['’]?s|there is|been (?:invited|asked) to"
        "|that|this|it|(?:me |us )?down for|(?:i['’]m|i am|we['’]re|we are)(?= "
        "(?:meeting|seeing|visiting|flying|travel))|"
        "(?:something|one|another one|one more|a new one)(?: (?:first|then|else|new|for "
        "me|in))*[.,:])\\s+)+|(?:\\s+(?:for|on|at|in|into|onto|to|from|of|and|is|was|are|will be|it will be|is set|"
        "is scheduled))+$"
        "|\\s*,\\s*(?:an?|the)$",
        Pattern::caseless);
    // "I forgot to put lunch": what they did not do is no part of the name.
    static const Pattern undone(
        "^(?:i |we )?(?:forgot|have forgotten|did not|didn['’]?t|never|meant|wanted|might|may)\\b(?: to)?"
        " (?:put|add|enter|schedule|book)\\s+",
        Pattern::caseless);
    static const Pattern slot("\\s+(?:time )?down$|(?<=meeting|appointment) time$", Pattern::caseless);
    constexpr std::string_view signs = ",.:;!?\"“”‘’ ";
    std::string name = undone.replaceAll(trimmed(rest, ",.:;!?\"“”"), "");
    name = afterKind(afterCalled(withoutWishes(withoutLoose(std::move(name), words))));
    name = trimmed(slot.replaceAll(edges.replaceAll(trimmed(name, ",.:;!? -"), ""), ""), ",.:;!? -");
    static const Pattern quotes("[\"“”]");
    name = trimmed(quotes.replaceAll(withoutQuotes(std::move(name)), ""), signs);
    static const Pattern guest("^(?:and )?with \\S", Pattern::caseless); // "An event on friday with John"
    static const Pattern joint("^and ", Pattern::caseless);
    if (!guest.find(name))
        return withUpperCaseFirst(name);
    const std::string with = joint.replaceAll(name, "");
    return "Event " + lowerCased(with.substr(0, 1)) + with.substr(1);
}

bool EventTitle::namesOccasion(std::string_view title)
{
    static const Pattern occasion(
        "\\b(?:meeting|appointment|appt|event|lunch|dinner|breakfast|brunch|party|call|interview|lesson|class|haircut|"
        "checkup|check[- ]up|coffee|drinks|session|practice|rehearsal|wedding|concert|conference|training|exam|recital|"
        "ceremony|funeral|game|match|doctor|doctors|dentist|dentists|vet|visit|standup|review|workshop|course|shift|"
        "yoga|gym|pilates|church|mass|tennis|football|soccer|swim|swimming|choir|seminar|webinar|lecture|presentation|"
        "birthday|anniversary|graduation|reunion|picnic|barbecue|bbq|flight|trip|play|show|movie|date|therapy|physio|"
        "play ?date|book club|car service|oil change|inspection|delivery|pickup|test)s?\\b",
        Pattern::caseless);
    return occasion.find(title).has_value();
}

bool EventTitle::takesDays(std::string_view title)
{
    static const Pattern whole(
        "\\b(?:birthdays?|bday|anniversar(?:y|ies)|holidays?|vacations?|trip|travel|travell?ing|leave|"
        "day off|days? out|off|pto|christmas|easter|new year|thanksgiving|festival|fair|deadline|due|"
        "all day|whole day|weekend|moving|move|jubilee|ramadan|hanukkah|diwali|payday|pay day|rent|"
        "bank holiday|camp|camping|cruise|visit|visits|stay|retreat|sick|exam week|expires?|"
        "renewal|day|reunion|picnic|offsite|jury duty)\\b",
        Pattern::caseless);
    return whole.find(title).has_value();
}

} // namespace quorvell
