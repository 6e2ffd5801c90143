// SPDX-License-Identifier: MIT
#include "Quorvell/tools/notebook/ListRequest.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Json.h"
#include "QuorvellCore/text/OneLine.h"
#include "QuorvellCore/text/PrintableText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

std::string lineUnder(const LiveFunctionCall& call, std::string_view key)
{
    return onOneLine(printableText(repairUtf8(call.string(key).value_or(""))));
}

bool isFlagSet(const LiveFunctionCall& call, std::string_view key)
{
    return readBool(call.args, key).value_or(false);
}

/// The texts under that key; one text alone counts as a list of one.
std::vector<std::string> textsUnder(const LiveFunctionCall& call, std::string_view key, std::string& problem)
{
    std::vector<std::string> texts;
    const Json* given = memberOf(call.args, key);
    if (!given || given->is_null())
        return texts;
    const auto one = readString(*given);
    const auto several = readStrings(*given);
    if (!one && !several)
        problem = std::string(key) + " must be a list of texts.";
    else if (several && several->size() > ListRequest::mostNamed)
        problem = std::string(key) + " has more than " + std::to_string(ListRequest::mostNamed) + " texts.";
    else
        for (const std::string& text : one ? std::vector{*one} : *several)
            if (const auto item = CheckList::itemText(text))
                texts.push_back(*item);
            else if (characterCount(text) > CheckList::longestItem)
                problem = "an item may have at most " + std::to_string(CheckList::longestItem) + " characters.";
    return texts;
}

} // namespace

std::optional<ListRequest> ListRequest::of(const LiveFunctionCall& call)
{
    constexpr std::array keys{"list", "id", "lists", "add", "tick", "untick", "remove", "keep_only", "replace",
        "clear_ticked", "clear", "rename", "delete", "create", "show", "has"};
    if (std::ranges::none_of(keys, [&](const char* key) { return memberOf(call.args, key); }))
        return std::nullopt;
    ListRequest request;
    std::string& problem = request.problem;
    request.id = lineUnder(call, "id");
    request.name = lineUnder(call, "list");
    request.title = lineUnder(call, "rename");
    request.has = textsUnder(call, "has", problem);
    request.showsItems = isFlagSet(call, "show");
    request.edit = {.add = textsUnder(call, "add", problem),
        .tick = textsUnder(call, "tick", problem),
        .untick = textsUnder(call, "untick", problem),
        .remove = textsUnder(call, "remove", problem),
        .keepOnly = textsUnder(call, "keep_only", problem),
        .replace = lineUnder(call, "replace"),
        .by = CheckList::itemText(lineUnder(call, "by")).value_or(""),
        .clearTicked = isFlagSet(call, "clear_ticked"),
        .clearAll = isFlagSet(call, "clear")};
    const bool removes = isFlagSet(call, "delete");
    const bool creates = isFlagSet(call, "create");
    const int acts = (request.edit.isEmpty() || creates ? 0 : 1) + (request.title.empty() ? 0 : 1) + (removes ? 1 : 0)
        + (creates ? 1 : 0);
    if (isFlagSet(call, "lists"))
        request.kind = Kind::showAll;
    else if (acts == 1)
        request.kind = creates      ? Kind::create
            : removes               ? Kind::remove
            : request.title.empty() ? Kind::edit
                                    : Kind::rename;
    if (acts > 1)
        problem = "rename, delete, create and changes of items need calls of their own.";
    else if (request.edit.replace.empty() != request.edit.by.empty())
        problem = "replace needs by, the new words, at most " + std::to_string(CheckList::longestItem) + " characters.";
    else if (creates && request.name.empty())
        problem = "a new list needs its name under list.";
    else if (creates && (request.edit.namesItems() || request.edit.clearAll || request.edit.clearTicked))
        problem = "a new list has no items yet. Give those that it shall have under add.";
    else if (characterCount(request.name) > longestName || characterCount(request.title) > longestName)
        problem = "a list's name may have at most " + std::to_string(longestName) + " characters.";
    return request;
}

} // namespace quorvell
