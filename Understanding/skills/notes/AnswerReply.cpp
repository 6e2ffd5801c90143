// SPDX-License-Identifier: MIT
#include "Understanding/skills/notes/AnswerReply.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/SecondPerson.h"
#include "QuorvellCore/text/TextMatch.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/time/SpokenWhen.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <vector>

namespace quorvell {

namespace {

constexpr std::size_t mostTold = 3; ///< More are hard to listen to.
constexpr std::size_t mostFacts = 12;

std::string finished(std::string text)
{
    text = trimmed(text);
    return text.empty() || std::string_view(".!?:").find(text.back()) != std::string_view::npos ? text : text + ".";
}

/// "under Garden" where the sentence does not say itself what it is about.
std::string underTitle(const std::string& title, const std::string& text)
{
    const std::string plain = TextMatch::normalized(title);
    const bool isSaid = plain.empty() || TextMatch::normalized(text).find(plain) != std::string::npos;
    return isSaid ? "" : " under " + trimmed(title, ".:");
}

std::string told(const Json& item)
{
    const std::string text = finished(readString(item, "text").value_or(""));
    const std::string title = trimmed(readString(item, "title").value_or(""));
    const std::string kind = readString(item, "kind").value_or("");
    const std::string under = underTitle(title, text);
    if (kind == "about_me")
        return AnswerReply::toThem(text);
    const Json* untrusted = memberOf(item, "untrusted");
    if (untrusted && untrusted->is_boolean() && untrusted->get<bool>())
        return "You kept this from elsewhere" + under + ": " + text;
    if (const auto date = ToolResults::dateIn(item, "remind_at"))
        return "There is a reminder, " + SpokenWhen::on(SpokenWhen::date(*date)) + under + ": " + text;
    if (kind == "explanation")
        return "I explained it to you" + under + ": " + text;
    return "You noted" + under + ": " + text;
}

std::vector<std::string> toldIn(const Json& result, std::size_t most)
{
    std::vector<std::string> all;
    const Json* list = memberOf(result, "sentences");
    for (std::size_t index = 0; list && list->is_array() && index < std::min(list->size(), most); ++index) {
        if (!readString((*list)[index], "text").value_or("").empty())
            all.push_back(told((*list)[index]));
    }
    return all;
}

} // namespace

std::string AnswerReply::toThem(std::string_view fact)
{
    const std::string text = finished(std::string(fact));
    return SecondPerson::of(text).value_or("You told me: " + text);
}

std::string AnswerReply::sentences(const Json& result)
{
    const auto all = toldIn(result, mostTold);
    if (all.size() < 2)
        return all.empty() ? "" : all.front();
    std::string reply = "I found " + std::to_string(all.size()) + " things.";
    for (const std::string& one : all)
        reply += " " + one;
    return reply;
}

std::string AnswerReply::facts(const Json& result)
{
    const Json* notes = memberOf(result, "notes");
    std::string reply;
    std::size_t told = 0;
    for (std::size_t index = 0; notes && notes->is_array() && index < std::min(notes->size(), mostFacts); ++index) {
        const std::string fact = trimmed(readString((*notes)[index], "title").value_or(""));
        if (fact.empty())
            continue;
        reply += (told == 0 ? "" : " ") + toThem(fact);
        ++told;
    }
    if (told == 0)
        return "I know nothing about you yet. You can tell me something: remember that I am vegetarian.";
    const auto count = static_cast<std::size_t>(std::max<std::int64_t>(0, readInteger(result, "count").value_or(0)));
    return reply + (count > told ? " And " + std::to_string(count - told) + " more; they are in your notebook." : "");
}

} // namespace quorvell
