// SPDX-License-Identifier: MIT
#include "Quorvell/actions/tools/LookText.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Json.h"
#include "QuorvellCore/text/OneLine.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace quorvell {

namespace {

constexpr std::size_t mostOptions = 12; ///< Entries of one menu that are told.
constexpr std::size_t longestAddress = 300; ///< Characters.

/// As JSON writes a text: what is quoted cannot end its own quotation.
std::string quoted(std::string_view text, std::size_t most)
{
    const std::string line = onOneLine(text);
    const std::string start = firstCharacters(line, most);
    return dumpJson(Json(start.size() < line.size() ? start + "…" : start));
}

void add(std::string& line, std::string_view name, std::string_view text, std::size_t most)
{
    if (!text.empty())
        line += ' ' + std::string(name) + ' ' + quoted(text, most);
}

std::string statesOf(const AutomationCandidate& candidate, const ScreenElement* element)
{
    std::string states;
    const auto state = [&states](bool holds, std::string_view word) {
        if (holds)
            states += (states.empty() ? "" : ", ") + std::string(word);
    };
    state(!candidate.enabled, "disabled");
    state(candidate.focused, "focused");
    state(candidate.secure, "secret: theirs alone");
    state(element && element->isDefault, "Return presses it");
    return states.empty() ? "" : " [" + states + ']';
}

std::string lineOf(const AutomationCandidate& candidate, const ScreenElement* element)
{
    const std::string_view role = candidate.role;
    std::string line = firstCharacters(onOneLine(candidate.id), 40) + ' '
        + firstCharacters(onOneLine(role.starts_with("AX") ? role.substr(2) : role), 40) + ' '
        + quoted(candidate.label, LookText::longestLabel);
    add(line, "holds", candidate.value, LookText::longestValue);
    if (!element)
        return line + statesOf(candidate, element);
    add(line, "hint", element->hint, LookText::longestLabel);
    add(line, "described as", element->description, LookText::longestLabel);
    add(line, "leads to", element->address, longestAddress);
    for (std::size_t place = 0; place < element->options.size() && place < mostOptions; ++place)
        add(line, place == 0 ? "options" : "or", element->options[place], LookText::longestLabel);
    if (element->options.size() > mostOptions)
        line += " and more";
    return line + statesOf(candidate, element);
}

/// Keeps the whole within its bytes.
class Lines {
public:
    explicit Lines(std::size_t most)
        : m_most(most)
    {
    }

    bool add(const std::string& line)
    {
        if (m_text.size() + line.size() + 1 > m_most)
            return false;
        m_text += line + '\n';
        return true;
    }
    std::string& text() { return m_text; }

private:
    std::size_t m_most; ///< Bytes.
    std::string m_text;
};

std::string leftOut(std::size_t count, std::string_view what)
{
    return count == 0 ? "" : std::to_string(count) + " more " + std::string(what) + " are left out.\n";
}

} // namespace

std::string LookText::of(const ScreenLook& look, Extent extent)
{
    const AutomationObservation& all = look.observation;
    const std::size_t most = std::min(all.candidates.size(), extent.mostElements);
    AutomationObservation shown{.app = all.app, .window = all.window, .page = all.page};
    shown.candidates.assign(all.candidates.begin(), all.candidates.begin() + static_cast<std::ptrdiff_t>(most));
    shown = shown.redacted();
    Lines lines(extent.mostBytes);
    lines.add("In front: " + quoted(shown.app, longestLabel) + ", window " + quoted(shown.window, longestLabel));
    if (shown.page)
        lines.add("Page: " + quoted(*shown.page, longestAddress)
            + (look.page && !look.page->loaded ? ", still loading" : ""));
    std::size_t told = 0;
    while (told < most) {
        const AutomationCandidate& candidate = shown.candidates[told];
        if (!lines.add(lineOf(candidate, told < look.elements.size() ? &look.elements[told] : nullptr)))
            break;
        ++told;
    }
    std::size_t menus = 0;
    for (; menus < look.menus.size() && menus < mostMenus; ++menus) {
        std::string line = "Menu:";
        for (const std::string& name : look.menus[menus])
            line += (line.size() > 5 ? " > " : " ") + quoted(name, longestLabel);
        if (!lines.add(line))
            break;
    }
    std::string text = std::move(lines.text()) + leftOut(all.candidates.size() - told, "elements")
        + leftOut(look.menus.size() - menus, "commands of menus");
    for (const std::string& omission : look.omissions)
        text += firstCharacters(onOneLine(omission), longestLabel) + '\n';
    return text;
}

} // namespace quorvell
