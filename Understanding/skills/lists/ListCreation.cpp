// SPDX-License-Identifier: MIT
#include "Understanding/skills/lists/ListCreation.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/lists/ItemWords.h"
#include "Understanding/skills/lists/ListPhrase.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

using Kind = ListIntent::Kind;
using Found = std::optional<ListIntent>;

Found newList(std::string name)
{
    return ListIntent{.kind = Kind::create, .list = std::move(name)};
}

Found newListWith(std::string name, const std::string& items)
{
    static const Pattern heading(
        "^(?:the )?(?:(?:following )?(?:names|words|things|entries|titles|items)|following)(?: of)?[:,]? (?=\\S)",
        Pattern::caseless);
    static const Pattern loose("(?:\\s+(?:on|to|in) (?:it|there))$", Pattern::caseless);
    return ListIntent::ofItems(Kind::create, std::move(name), heading.replaceAll(loose.replaceAll(items, ""), ""));
}

/// A day that makes a list another one than that without it: "to do list for monday".
Found ofDay(const std::string& phrase)
{
    static const Pattern form("^(.*?\\b(?:" + ListPhrase::listWord
            + ")(?: of [^,:]+?)?) (?:for|on|due) ((?:(?:the|this|next|coming) )*"
              "(?:tomorrow|weekend|week|month|year|\\w+day|january|february|march|april|may|june|july|august|september"
              "|october|november|december)(?: (?:morning|afternoon|evening|night))?)$",
        Pattern::caseless);
    static const Pattern listOf("\\b(?:" + ListPhrase::listWord + ") of\\b", Pattern::caseless);
    const auto match = form.find(phrase);
    const auto name = match ? ListPhrase::nameIn(match->texts[0]) : std::nullopt;
    if (!name)
        return std::nullopt;
    const bool hasListWord = listOf.find(match->texts[0]).has_value();
    return newList(
        (name->empty() ? std::string("list") : *name + (hasListWord ? "" : " list")) + " for " + match->texts[1]);
}

/// What is said beside the name: "call it Hawaii", "the name comes later".
std::string withoutAsides(const std::string& phrase)
{
    static const Pattern later(
        ",? (?:the |its )?name (?:will|to|can|comes|later|is to|should)\\b.*$"
        "| (?:to be (?:created|made|ready|done) )?(?:by|at|before) \\d.*$|,? (?:as follows|as below|below)(?=[:,]|$)",
        Pattern::caseless);
    return later.replaceAll(phrase, "");
}

/// "List groceries", "list milk, eggs and tea", "list: holiday packing. swimsuit, hat".
Found bareWords(const std::string& phrase)
{
    static const Pattern bare("^(?:an? )?(?:new )?" + ListPhrase::listWord
            + "[,:]? (?!(?:of|for|called|named|with|that|by|at|in|on|to|and|from|about|is|my|the|all)\\b)(.+)$",
        Pattern::caseless);
    static const Pattern headed("^([^.,:]{2,40})(?:\\.|:| -) (.+)$");
    const auto named = bare.find(phrase);
    if (!named)
        return std::nullopt;
    const std::string said = ListPhrase::withoutEnds(named->texts[0]);
    if (const auto match = headed.find(said); match && !ListPhrase::isSentence(match->texts[0]))
        return newListWith(match->texts[0], match->texts[1]);
    constexpr std::ptrdiff_t mostBlanks = 3; ///< Of a name.
    const bool isName = std::ranges::count(said, ' ') <= mostBlanks && ItemWords::split(said).size() == 1
        && !ListPhrase::isSentence(said) && !ListPhrase::isKeptElsewhere(said);
    if (isName)
        return newList(said);
    return ItemWords::split(said).size() > 1 ? newListWith("", said) : std::nullopt;
}

/// "A list for the party", with what is to be on it.
Found listIn(const std::string& said)
{
    static const Pattern filled("^(.*?\\b" + ListPhrase::listWord
            + "(?:\\s.*?)?)[,:]?\\s+(?:(?:starting |beginning |start |begin )?with(?! (?:(?:my|our|the|an?) "
              ")?(?:name|title)\\b)"
              "|including|containing|that (?:has|says)|and (?:add|put)|having)(?: the(?! following))? (.+)$",
        Pattern::caseless);
    static const Pattern colon("^(.*?\\b" + ListPhrase::listWord + "[^:]*?)(?::\\s*| - )(.+)$", Pattern::caseless);
    static const Pattern naming(
        "^(.+?)[,.;]? (?:and )?(?:call|name|title|label|(?:it|which) (?:is|should be) (?:called|named|titled)|it['’]?s "
        "called)(?: (?:it|that|this|the list))?(?: as)? (.+)$",
        Pattern::caseless);
    static const Pattern thenAdd("^(.+?)[.,;] (?:then |and )?(?:add|put) (.+?)[.]?$", Pattern::caseless);
    const std::string phrase = withoutAsides(said);
    if (const auto match = naming.find(phrase); match && ListPhrase::nameIn(match->texts[0])) {
        const std::string name = ListPhrase::withoutEnds(match->texts[1]);
        const auto more = thenAdd.find(name);
        return more ? newListWith(more->texts[0], more->texts[1]) : newList(name);
    }
    for (const Pattern* form : {&filled, &colon}) {
        const auto match = form->find(phrase);
        const auto name = match ? ListPhrase::nameIn(match->texts[0]) : std::nullopt;
        if (name && name->empty() && form == &colon)
            if (auto intent = bareWords("list " + match->texts[1]))
                return intent;
        if (name)
            return newListWith(*name, match->texts[1]);
    }
    if (auto intent = ofDay(phrase))
        return intent;
    if (const auto name = ListPhrase::nameIn(phrase))
        return newList(*name);
    return bareWords(phrase);
}

/// A list of that name may be there: whether another one is wished for.
Found created(const std::string& phrase)
{
    static const Pattern fresh("^(?:(?:an?|the|my) )?(?:fresh|(?:completely |brand[ -])new)\\b", Pattern::caseless);
    static const Pattern another(
        "^(?:(?:an?|the|my|one) )?(?:another|second|separate|different|additional|extra|one more)\\b",
        Pattern::caseless);
    auto intent = listIn(phrase);
    if (intent && intent->kind == Kind::create)
        intent->beside = another.find(phrase) ? ListIntent::Beside::another
            : fresh.find(phrase)              ? ListIntent::Beside::anew
                                              : ListIntent::Beside::none;
    return intent;
}

/// What begins with a verb that makes something of other matters, too: "add a new list", "take down a list".
Found made(const std::string& text)
{
    static const Pattern make(
        "^(?:create|make|start|begin|set up|setup|build|prepare|compose|compile|draft|generate|draw up|put together"
        "|write(?: up| out| down)?|write me|open(?: up)?(?= (?:an? |another |new "
        "))|form|initiate|produce|craft|establish|construct|develop"
        "|keep(?= an? )|maintain(?= an? )|set(?= an? .*\\blist))(?: me| us| for me| for us)?\\s+(?=\\S)",
        Pattern::caseless);
    static const Pattern loosely(
        "^(?:add|put up|take|take down|note down|jot down|key in|type(?: in| up| out)?|save|enter|input|record|register"
        "|log|name|call|arrange|insert|include|do)(?: me| us)? (?=(?:(?:an?|one|another|new|fresh) (?:\\S+ ){0,3}?)?"
            + ListPhrase::listWord + "\\b)",
        Pattern::caseless);
    static const Pattern onto(ListPhrase::links("to|on|in|into|onto|from"), Pattern::caseless);
    static const Pattern sure("^sure\\b", Pattern::caseless);
    static const Pattern writing("^write", Pattern::caseless);
    static const Pattern duties("\\bto[ -]do\\b", Pattern::caseless); // no link
    const auto match = make.find(text) ? make.find(text) : loosely.find(text);
    const std::string rest = match ? text.substr(match->range.end) : std::string();
    const bool mayPutOn = !make.find(text) || writing.find(text);
    const bool isOther =
        rest.empty() || sure.find(rest) || (mayPutOn && ListPhrase::endingIn(duties.replaceAll(rest, "todo"), onto));
    return isOther ? std::nullopt : created(rest);
}

} // namespace

std::optional<ListIntent> ListCreation::read(const std::string& text)
{
    static const Pattern wanted(
        "^(?:(?:i(?:['’]d| would)? )?(?:need|want|like)|have|get(?: me)?|open|bring up|show(?: me)?|give me|do|let me "
        "have)\\s+"
        "(?=(?:an?|one|another|the)?\\s*(?:brand[ -])?new\\s|(?<=need |want |like )(?:an?|one|another)\\s)",
        Pattern::caseless);
    static const Pattern fresh(
        "^(?:an? )?(?:brand[ -])?new\\s+(?=.*\\b" + ListPhrase::listWord + "\\b)", Pattern::caseless);
    static const Pattern isNew(
        "^(?:an? |another )?(?:brand[ -])?new\\b|^(?:an?|another) (?:\\S+ ){0,3}" + ListPhrase::listWord + "\\b",
        Pattern::caseless);
    static const Pattern kept(
        "^(?:keep|have) (?:an? )?(?:track|record|account) of (.+?) (?:in|on|as) (?:an? )?(?:new )?"
            + ListPhrase::listWord + "$|^" + ListPhrase::listWord + " (?:creation|making) (?:for|of) (.+)$",
        Pattern::caseless);
    static const Pattern behind("^(?!(?:add|put|what|which|is|are|do|show|read|open|delete|remove|clear|find|on|to)\\b)"
                                "(.+?)[,:]? (?:as )?(?:an? )?new "
            + ListPhrase::listWord + "$",
        Pattern::caseless);
    static const Pattern before("^" + ListPhrase::listWord + ":\\s*(.+)$", Pattern::caseless);
    static const Pattern filled("^" + ListPhrase::listWord + " (?:for|of) ([^:,]{2,40}):\\s*(.+)$", Pattern::caseless);
    if (auto intent = made(text))
        return intent;
    if (const auto match = wanted.find(text); match && isNew.find(text.substr(match->range.end)))
        return created(text.substr(match->range.end));
    if (const auto match = kept.find(text)) {
        const auto name = ListPhrase::nameIn("list of " + match->texts[0] + match->texts[1]);
        return name ? newList(*name) : std::nullopt;
    }
    if (const auto match = filled.find(text))
        return newListWith(match->texts[0], match->texts[1]);
    if (const auto match = before.find(text))
        return newListWith("", match->texts[0]);
    const auto match = behind.find(text);
    if (match && !ListPhrase::isSentence(match->texts[0]) && !ListPhrase::isKeptElsewhere(match->texts[0]))
        return newList(match->texts[0]);
    return fresh.find(text) ? created(text) : std::nullopt;
}

} // namespace quorvell
