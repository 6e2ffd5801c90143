// SPDX-License-Identifier: MIT
#include "LiveService/conversation/ClientText.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"

#include <optional>
#include <utility>

namespace quorvell {

namespace {

constexpr auto caseless = Pattern::Case::insensitive;
constexpr std::string_view typedMark = "[They typed]";
constexpr std::string_view eventMark = "[Quorvell app event]";
constexpr std::string_view shownNote = "your reply is shown as text";
constexpr std::size_t longestEvent = 4000; ///< Characters of an event that are looked at.
constexpr std::size_t longestName = 40;

/// "[They typed] (one note; another) text".
ClientText readTyped(std::string_view rest)
{
    ClientText result;
    std::string text = trimmed(rest);
    const std::size_t end = text.starts_with('(') ? text.find(')') : std::string::npos;
    if (end != std::string::npos) {
        if (std::string_view(text).substr(0, end).find(shownNote) != std::string_view::npos)
            result.manner = ClientText::Manner::shown;
        text = trimmed(std::string_view(text).substr(end + 1));
    }
    result.text = std::move(text);
    return result;
}

bool asksForGreeting(const std::string& text)
{
    static const Pattern hello("\\bsay (?:hello|hi)\\b|\\bgreet (?:them|the user|him|her)\\b", caseless);
    return hello.find(text).has_value();
}

/// The name before "just called"; "They" stands for none.
std::string nameIn(const std::string& text)
{
    static const Pattern called("^\\s*(\\S.{0,80}?) (?:has )?just called\\b");
    const auto match = called.find(text);
    return match && match->texts[0] != "They" ? firstCharacters(match->texts[0], longestName) : std::string();
}

/// A request that an earlier connection has seen to, in whole or in part: it is not carried out again here. Nothing
/// for any other event.
std::optional<ClientText> readHandover(const std::string& text)
{
    static const Pattern renewed("\\bThe connection was renewed before that was finished\\. "
                                 "|\\bA call from before the connection was renewed has finished: ");
    if (!renewed.find(text))
        return std::nullopt;
    const std::size_t result = text.rfind(" answered {");
    if (result == std::string::npos && text.find(" is still running;") != std::string::npos)
        return ClientText{.kind = ClientText::Kind::nothing}; // Its result is told when it comes.
    ClientText told{.kind = ClientText::Kind::words, .text = "Is there anything else?"};
    if (result != std::string::npos)
        told.text = text.compare(result, 19, " answered {\"error\":") == 0 ? "That did not work. Please ask again."
                                                                           : "That is done.";
    return told;
}

/// An event that quotes the user: They said: “...”.
ClientText readEvent(std::string_view rest)
{
    static const Pattern quoted("^\\s*They (?:just )?said: “(.*?)”\\.");
    static const Pattern dictated(
        "\\b(?:say|tell (?:them|him|her|the user)|read (?:this )?out)(?: this)?: “(.+?)”", caseless);
    const std::string text = firstCharacters(rest, longestEvent);
    if (auto handover = readHandover(text))
        return *std::move(handover);
    if (const auto match = quoted.find(text))
        return {.text = match->texts[0]};
    if (const auto match = dictated.find(text))
        return {.kind = ClientText::Kind::words, .text = match->texts[0]};
    if (asksForGreeting(text))
        return {.kind = ClientText::Kind::greeting, .text = nameIn(text)};
    return {.kind = ClientText::Kind::nothing};
}

} // namespace

ClientText ClientText::fromMessage(std::string_view message)
{
    if (message.starts_with(typedMark))
        return readTyped(message.substr(typedMark.size()));
    if (message.starts_with(eventMark))
        return readEvent(message.substr(eventMark.size()));
    return {.text = trimmed(message)};
}

ClientText ClientText::fromInstructions(std::string_view instructions)
{
    return readEvent(instructions.substr(instructions.starts_with(eventMark) ? eventMark.size() : 0));
}

} // namespace quorvell
