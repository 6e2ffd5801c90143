// SPDX-License-Identifier: MIT
#include "Quorvell/practice/file/PracticeReferences.h"

#include "Quorvell/practice/description/PracticeAddress.h"
#include "QuorvellCore/text/TextMatch.h"

#include <algorithm>
#include <set>
#include <string>
#include <string_view>

namespace quorvell {

namespace {

std::string at(const std::string& list, std::size_t index)
{
    return list + "[" + std::to_string(index) + "]";
}

class ReferenceCheck {
public:
    ReferenceCheck(const PracticeDescription& description, PracticeMistakes& mistakes)
        : m_description(description)
        , m_mistakes(mistakes)
    {
    }

    void check()
    {
        collect();
        if (!m_description.front.empty())
            app("front", m_description.front);
        for (std::size_t index = 0; index < m_description.apps.size(); ++index)
            check(at("apps", index), m_description.apps[index]);
        check("done_when", m_description.doneWhen);
    }

private:
    void collect()
    {
        const auto& apps = m_description.apps;
        for (std::size_t place = 0; place < apps.size(); ++place) {
            const std::string own = at("apps", place);
            addOnce(m_apps, TextMatch::normalized(apps[place].name), own + ".name");
            for (std::size_t index = 0; index < apps[place].windows.size(); ++index) {
                addOnce(m_windows, apps[place].windows[index].name, at(own + ".windows", index) + ".name");
                collectElements(at(own + ".windows", index), apps[place].windows[index]);
            }
            std::set<std::string> pages;
            for (std::size_t index = 0; index < apps[place].pages.size(); ++index) {
                const PracticePlace& page = apps[place].pages[index];
                addOnce(pages, PracticeAddress::key(page.name), at(own + ".pages", index) + ".address");
                collectElements(at(own + ".pages", index), page);
            }
        }
    }

    void collectElements(const std::string& place, const PracticePlace& in)
    {
        for (std::size_t index = 0; index < in.elements.size(); ++index)
            addOnce(m_elements, in.elements[index].name, at(place + ".elements", index) + ".name");
    }

    void addOnce(std::set<std::string>& names, const std::string& name, const std::string& place)
    {
        if (!names.insert(name).second)
            m_mistakes.add(place, "This name stands for two.");
    }

    void check(const std::string& place, const PracticeApp& own)
    {
        if (!own.isBrowser && !own.pages.empty())
            m_mistakes.add(place + ".pages", "Only a browser has pages: \"browser\": true.");
        if (own.isBrowser && !own.start.empty())
            page(place + ".start", own.start);
        const auto isStart = [&](const PracticePlace& window) { return window.name == own.start; };
        if (!own.isBrowser && std::none_of(own.windows.begin(), own.windows.end(), isStart))
            m_mistakes.add(place + ".start", "It has no window of this name to begin with.");
        if (!own.searchPage.empty())
            page(place + ".search_page", own.searchPage);
        check(place + ".opened", own.opened);
        for (std::size_t index = 0; index < own.windows.size(); ++index)
            check(at(place + ".windows", index), own.windows[index]);
        for (std::size_t index = 0; index < own.pages.size(); ++index)
            check(at(place + ".pages", index), own.pages[index]);
        for (std::size_t index = 0; index < own.menus.size(); ++index) {
            const PracticeMenuItem& item = own.menus[index];
            check(at(place + ".menus", index) + ".when", item.shownWhen);
            check(at(place + ".menus", index) + ".enabled_when", item.enabledWhen);
            check(at(place + ".menus", index) + ".does", item.chosen);
        }
    }

    void check(const std::string& place, const PracticePlace& shown)
    {
        facts(place + ".title", shown.title);
        facts(place + ".text", shown.text);
        if (!shown.redirect.empty())
            page(place + ".redirect", shown.redirect);
        check(place + ".opened", shown.opened);
        for (const auto& [key, effects] : shown.keys)
            check(place + ".keys." + key, effects);
        for (std::size_t index = 0; index < shown.elements.size(); ++index)
            check(at(place + ".elements", index), shown.elements[index]);
    }

    void check(const std::string& place, const PracticeElement& shown)
    {
        facts(place + ".label", shown.label);
        facts(place + ".description", shown.description);
        if (!shown.address.empty())
            page(place + ".address", shown.address);
        check(place + ".when", shown.shownWhen);
        check(place + ".enabled_when", shown.enabledWhen);
        check(place + ".press", shown.pressed);
        check(place + ".submit", shown.submitted);
        check(place + ".changed", shown.changed);
        for (const auto& [target, effects] : shown.drops) {
            element(place + ".drops." + target, target);
            check(place + ".drops." + target, effects);
        }
    }

    void check(const std::string& list, const PracticeConditions& conditions)
    {
        using Kind = PracticeCondition::Kind;
        for (std::size_t index = 0; index < conditions.size(); ++index) {
            const PracticeCondition& condition = conditions[index];
            const std::string place = at(list, index);
            const bool isOfFact = condition.kind == Kind::factIs || condition.kind == Kind::factIsNot
                || condition.kind == Kind::factContains;
            if (isOfFact)
                facts(place, "{" + condition.name + "}");
            facts(place, condition.value);
            if (condition.kind == Kind::app)
                app(place, condition.name);
            else if (condition.kind == Kind::window)
                window(place, condition.name);
            else if (condition.kind == Kind::page && PracticeAddress::key(condition.name).empty())
                m_mistakes.add(place, "This is not a web address.");
        }
    }

    void check(const std::string& list, const PracticeEffects& effects)
    {
        for (std::size_t index = 0; index < effects.size(); ++index)
            check(at(list, index), effects[index]);
    }

    void check(const std::string& place, const PracticeEffect& effect)
    {
        using Kind = PracticeEffect::Kind;
        check(place + ".if", effect.conditions);
        facts(place, effect.text);
        switch (effect.kind) {
        case Kind::set:
            return facts(place, "{" + effect.name + "}");
        case Kind::window:
        case Kind::close:
            return window(place, effect.name);
        case Kind::app:
            return app(place, effect.name);
        case Kind::page:
            return page(place, effect.text);
        case Kind::focus:
            return element(place, effect.name);
        case Kind::happens:
        case Kind::notify:
            return;
        }
    }

    void app(const std::string& place, const std::string& name)
    {
        if (!m_apps.contains(TextMatch::normalized(name)))
            m_mistakes.add(place, "There is no application of this name.");
    }
    void window(const std::string& place, const std::string& name)
    {
        if (!m_windows.contains(name))
            m_mistakes.add(place, "There is no window of this name.");
    }
    void element(const std::string& place, const std::string& name)
    {
        if (!m_elements.contains(name))
            m_mistakes.add(place, "There is no element of this name.");
    }
    /// One with facts in it may lead anywhere.
    void page(const std::string& place, const std::string& address)
    {
        const auto& apps = m_description.apps;
        const bool isKnown = std::any_of(
            apps.begin(), apps.end(), [&](const PracticeApp& own) { return PracticeAddress::page(own, address); });
        if (address.find('{') == std::string::npos && !isKnown)
            m_mistakes.add(place, "There is no page at this address.");
    }
    /// "{name}", where what stands between the braces looks like a name.
    void facts(const std::string& place, std::string_view text)
    {
        for (std::size_t begin = text.find('{'); begin < text.size(); begin = text.find('{', begin + 1)) {
            const std::size_t end = text.find_first_of("{}\n\",:", begin + 1);
            if (end >= text.size() || text[end] != '}')
                continue;
            const std::string name(text.substr(begin + 1, end - begin - 1));
            if (!m_description.facts.contains(name))
                m_mistakes.add(place, "There is no fact “" + name.substr(0, 100) + "”.");
        }
    }

    const PracticeDescription& m_description;
    PracticeMistakes& m_mistakes;
    std::set<std::string> m_apps; ///< TextMatch::normalized.
    std::set<std::string> m_windows;
    std::set<std::string> m_elements;
};

} // namespace

void PracticeReferences::check(const PracticeDescription& description, PracticeMistakes& mistakes)
{
    ReferenceCheck(description, mistakes).check();
}

} // namespace quorvell
