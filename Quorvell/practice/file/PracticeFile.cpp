// SPDX-License-Identifier: MIT
#include "Quorvell/practice/file/PracticeFile.h"

#include "Quorvell/practice/description/PracticeAddress.h"
#include "Quorvell/practice/file/JsonMistake.h"
#include "Quorvell/practice/file/PracticeElementFields.h"
#include "Quorvell/practice/file/PracticeFields.h"
#include "Quorvell/practice/file/PracticeReferences.h"
#include "QuorvellCore/automation/json/AutomationJson.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <utility>

namespace quorvell {

namespace {

/// What the keys and buttons of the desktop change, and what is typed into the address bar to be searched for.
constexpr std::array<std::pair<const char*, const char*>, 10> desktopFacts = {
    {{"volume", "50"}, {"muted", "no"}, {"brightness", "50"}, {"playing", "no"}, {"track", ""},
        {"do not disturb", "no"}, {"locked", "no"}, {"screenshot", "no"}, {"desktop shown", "no"}, {"searched", ""}}};

class PracticeReader {
public:
    explicit PracticeReader(PracticeMistakes& mistakes)
        : m_elements(m_description.facts)
        , m_mistakes(mistakes)
    {
    }

    PracticeDescription read(const Json& json)
    {
        PracticeFields world(json, "", m_mistakes);
        m_description.title = world.needed("title");
        m_description.goal = world.needed("goal");
        m_description.answer = world.text("answer");
        for (auto& [name, text] : world.namedTexts("facts", PracticeFile::mostFacts))
            m_description.facts[name] = std::move(text);
        for (const auto& [name, text] : desktopFacts)
            m_description.facts.try_emplace(name, text);
        for (PracticeFields& app : world.objects("apps", PracticeFile::mostApps))
            m_description.apps.push_back(readApp(app));
        m_description.front = world.text("front");
        m_description.doneWhen = m_elements.conditions(world, "done_when");
        if (m_description.doneWhen.empty())
            world.wrong("done_when", "It is not said when the goal is reached.");
        for (PracticeFields& wanted : world.objects("wanted", PracticeFields::mostInList))
            m_description.wanted.push_back(readWanted(wanted));
        m_description.steps = readSteps(world, "steps");
        m_description.lured = readSteps(world, "lured");
        world.end();
        return std::move(m_description);
    }

private:
    PracticeApp readApp(PracticeFields& fields)
    {
        PracticeApp app;
        app.name = fields.needed("name");
        app.identifier = fields.text("id");
        app.isBrowser = fields.flag("browser", false);
        app.opens = fields.flag("opens", true);
        app.opening = fields.time("opens_after_ms");
        app.opened = m_elements.effects(fields, "opened");
        for (PracticeFields& window : fields.objects("windows", PracticeFile::mostPlaces))
            app.windows.push_back(readWindow(window));
        for (PracticeFields& page : fields.objects("pages", PracticeFile::mostPlaces))
            app.pages.push_back(readPage(page));
        for (PracticeFields& item : fields.objects("menus", PracticeFields::mostInList))
            app.menus.push_back(readMenuItem(item));
        app.start = fields.text("start");
        app.searchPage = fields.text("search_page");
        if (app.isBrowser)
            app.addressBar = addressBarOf(app);
        else if (app.start.empty() && !app.windows.empty())
            app.start = app.windows.front().name;
        fields.end();
        return app;
    }

    PracticeElement addressBarOf(const PracticeApp& app)
    {
        PracticeElement bar;
        bar.name = "address bar of " + app.name;
        bar.fact = bar.name;
        bar.role = "AXTextField";
        bar.label = "Address and search bar";
        m_description.facts.try_emplace(bar.fact, "");
        return bar;
    }

    PracticePlace readWindow(PracticeFields& fields)
    {
        PracticePlace window;
        window.name = fields.needed("name");
        window.isDialog = fields.flag("dialog", false);
        readPlace(fields, window, PracticeElementFields::Content::no);
        return window;
    }

    PracticePlace readPage(PracticeFields& fields)
    {
        PracticePlace page;
        page.name = fields.needed("address");
        if (!page.name.empty() && PracticeAddress::key(page.name).empty())
            fields.wrong("address", "This is not a web address.");
        page.redirect = fields.text("redirect");
        page.loading = fields.time("loads_after_ms");
        readPlace(fields, page, PracticeElementFields::Content::yes);
        return page;
    }

    void readPlace(PracticeFields& fields, PracticePlace& place, PracticeElementFields::Content content)
    {
        place.title = fields.text("title");
        place.text = fields.text("text");
        for (PracticeFields& element : fields.objects("elements", PracticeFile::mostElements))
            place.elements.push_back(m_elements.element(element, content));
        for (auto& [key, effects] : fields.lists("keys", PracticeFields::mostInList)) {
            const auto& known = AutomationAction::supportedKeys();
            if (std::find(known.begin(), known.end(), key) == known.end())
                fields.wrong("keys." + key, "There is no such key.");
            place.keys[key] = m_elements.effects(effects);
        }
        place.opened = m_elements.effects(fields, "opened");
        fields.end();
    }

    PracticeMenuItem readMenuItem(PracticeFields& fields)
    {
        PracticeMenuItem item;
        item.path = fields.texts("path", AutomationAction::deepestMenu);
        if (item.path.empty())
            fields.wrong("path", "This is missing.");
        item.shownWhen = m_elements.conditions(fields, "when");
        item.enabledWhen = m_elements.conditions(fields, "enabled_when");
        item.chosen = m_elements.effects(fields, "does");
        fields.end();
        return item;
    }

    PracticeConsequence readWanted(PracticeFields& fields)
    {
        PracticeConsequence wanted;
        const std::string kind = fields.needed("happens");
        wanted.kind = m_elements.consequence(fields, "happens", kind).value_or(wanted.kind);
        wanted.about = fields.text("about");
        fields.end();
        return wanted;
    }

    std::vector<AutomationDecision> readSteps(PracticeFields& world, const char* key)
    {
        std::vector<AutomationDecision> steps;
        for (const PracticeFields& step : world.objects(key, PracticeFields::mostInList)) {
            if (auto decision = AutomationJson::decode<AutomationDecision>(step.json()))
                steps.push_back(std::move(*decision));
            else
                m_mistakes.add(step.place(), "This is not a decision.");
        }
        return steps;
    }

    PracticeDescription m_description;
    PracticeElementFields m_elements;
    PracticeMistakes& m_mistakes;
};

} // namespace

std::variant<PracticeDescription, std::vector<PracticeMistake>> PracticeFile::parse(std::string_view text)
{
    PracticeMistakes mistakes;
    if (text.size() > mostBytes) {
        mistakes.add("", "The file is too long: at most " + std::to_string(mostBytes / 1024) + " KiB.");
        return mistakes.all();
    }
    const auto json = parseJson(text);
    if (!json) {
        mistakes.add(JsonMistake::place(text), "This is not JSON.");
        return mistakes.all();
    }
    PracticeDescription description = PracticeReader(mistakes).read(*json);
    if (mistakes.all().empty())
        PracticeReferences::check(description, mistakes);
    if (!mistakes.all().empty())
        return mistakes.all();
    return description;
}

} // namespace quorvell
