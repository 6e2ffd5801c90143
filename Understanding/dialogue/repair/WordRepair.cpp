// SPDX-License-Identifier: MIT
#include "Understanding/dialogue/repair/WordRepair.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/words/RequestWords.h"
#include "Understanding/words/WordDistance.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <utility>

namespace quorvell {

namespace {

const std::string some = "(\\S+(?: \\S+){0,3}?)"; ///< Up to four words.
const std::string said = "(?:no[,.]? |sorry[,.]? |wait[,.]? )*";
const std::string meant = "(?:(?:i|we) (?:said|say|meant|mean|wanted|typed|was saying"
                          "|am saying)(?: to say)?[,:]? |(?:it|that|he|she|the name)(?:['’]s| is| was"
                          "|['’]s called| is called| should be)[,:]? )";

bool isId(std::string_view key)
{
    return key == "id" || key.ends_with("_id") || key == "undo" || key == "date" || key == "start" || key == "end";
}

/// `text` is changed; whether it was.
bool replaceIn(Json& value, const WordRepair& repair)
{
    bool isChanged = false;
    if (auto* text = value.get_ptr<std::string*>()) {
        if (auto better = repair.in(*text)) {
            *text = *std::move(better);
            return true;
        }
    } else if (value.is_object()) {
        for (auto member = value.begin(); member != value.end(); ++member)
            isChanged = (!isId(member.key()) && replaceIn(member.value(), repair)) || isChanged;
    } else if (value.is_array()) {
        for (Json& item : value)
            isChanged = replaceIn(item, repair) || isChanged;
    }
    return isChanged;
}

/// The only word that may have been meant to be the right one, as it stands in `text`.
std::optional<std::string> lookAlike(const std::string& text, const std::string& right)
{
    const RequestWords words(text);
    std::optional<std::string> found;
    const std::string wanted = lowerCased(right);
    for (std::size_t index = 0; index < words.size(); ++index) {
        const std::string word(words.at(index));
        if (word == wanted)
            return std::nullopt; // It stands there already.
        if (word.size() < 3 || !WordDistance::areAlike(word, wanted))
            continue;
        if (found && *found != word)
            return std::nullopt;
        found = word;
    }
    return found;
}

std::optional<std::string> replaced(const std::string& text, const std::string& before, const std::string& right)
{
    static const Pattern signs("[^\\p{L}\\p{N} ]");
    const std::string escaped = signs.replaceAll(before, ".");
    const Pattern words("(?<![\\p{L}\\p{N}])" + escaped + "(?![\\p{L}\\p{N}])", Pattern::caseless);
    const auto match = words.find(text);
    if (!match || trimmed(before).empty())
        return std::nullopt;
    std::string better = words.replaceAll(text, right);
    return match->range.start == 0 ? withUpperCaseFirst(better) : better;
}

} // namespace

std::optional<WordRepair> WordRepair::read(std::string_view core)
{
    static const Pattern rightFirst("^" + said + meant + "?" + some
            + "[,;]? (?:(?:and |but )?not|instead of|rather than) (?:that |with |to )?" + some + "$",
        Pattern::caseless);
    static const Pattern wrongFirst(
        "^" + said + "not " + some + "(?:[,;:]| but| -) " + meant + "?" + some + "$", Pattern::caseless);
    static const Pattern onlyRight(
        "^" + said + "(?:i|we) (?:said|meant|mean|typed|was saying)[,:]? " + some + "$", Pattern::caseless);
    // "No, John": a single word, which must look like one that was understood.
    static const Pattern bare("^(?:no|nope|sorry|wait)[,.]? ([\\p{L}'’\\-]{3,})$", Pattern::caseless);
    static const Pattern closing(
        "^(?:thanks?|thank|wait|never|please|problem|worries|need|way|idea|more|sorry|other|else"
        "|one|this|stop|cancel|undo|wrong|yes|sir|matter|later|earlier|again|longer)$",
        Pattern::caseless);
    static const Pattern spoken("\\b(?:not|do|what|that|it|you|to|nothing|so|please)\\b", Pattern::caseless);
    const std::string words(core);
    WordRepair repair;
    if (const auto match = wrongFirst.find(words))
        repair = {trimmed(match->texts[1], " ,;:.!"), trimmed(match->texts[0], " ,;:.!")};
    else if (const auto first = rightFirst.find(words))
        repair = {trimmed(first->texts[0], " ,;:.!"), trimmed(first->texts[1], " ,;:.!")};
    else if (const auto only = onlyRight.find(words))
        repair = {trimmed(only->texts[0], " ,;:.!"), {}};
    else if (const auto word = bare.find(words); word && !closing.find(word->texts[0]))
        repair = {word->texts[0], {}};
    if (repair.right.empty() || spoken.find(repair.right) || spoken.find(repair.wrong))
        return std::nullopt;
    return repair;
}

std::optional<std::string> WordRepair::in(const std::string& text) const
{
    if (!wrong.empty()) {
        if (auto better = replaced(text, wrong, right))
            return better;
    }
    // Neither may be quite the word that was understood.
    const auto alike = lookAlike(text, right);
    const bool isMeant = alike && (wrong.empty() || WordDistance::areAlike(*alike, lowerCased(wrong)));
    return isMeant ? replaced(text, *alike, right) : std::nullopt;
}

std::optional<std::string> WordRepair::inArguments(const std::string& arguments) const
{
    auto json = parseJson(arguments);
    if (!json || !replaceIn(*json, *this))
        return std::nullopt;
    return dumpJson(*json);
}

} // namespace quorvell
