// SPDX-License-Identifier: MIT
// Any text is a practice world or has a mistake; whatever the world, everything in it can be tried, and it comes to
// rest.
#include "Quorvell/practice/file/PracticeFile.h"
#include "Quorvell/practice/world/PracticeWorld.h"
#include "fuzzing.h"

namespace {

using namespace quorvell;

/// Each element of what is shown is pressed and typed into, in a copy of the world each.
void tryEverything(const PracticeWorld& world)
{
    const PracticeView view = world.view();
    for (const PracticeShown& shown : view.elements) {
        if (!shown.element)
            continue;
        PracticeWorld pressed = world;
        (void)pressed.act(AutomationAction{.tool = AutomationAction::Tool::click, .target = shown.element->name});
        pressed.advance(std::chrono::minutes(20));
        require(pressed.consequences().size() <= PracticeState::mostConsequences);
        (void)pressed.view();
        PracticeWorld typed = world;
        (void)typed.act(screen_action::ReplaceText{shown.element->name, "a\nb"});
        (void)typed.act(screen_action::Drag{shown.area.left, shown.area.top, 500, 500});
        (void)typed.text();
    }
    for (const std::string_view key : AutomationAction::supportedKeys()) {
        PracticeWorld changed = world;
        (void)changed.act(AutomationAction{.tool = AutomationAction::Tool::pressKey, .key = std::string(key)});
        (void)changed.view();
    }
}

} // namespace

void quorvell::search(std::string_view text)
{
    auto read = PracticeFile::parse(text);
    if (const auto* mistakes = std::get_if<std::vector<PracticeMistake>>(&read)) {
        require(!mistakes->empty() && mistakes->size() <= PracticeMistakes::most);
        return;
    }
    PracticeWorld world(std::get<PracticeDescription>(std::move(read)));
    tryEverything(world);
    for (const PracticeApp& app : world.description().apps) {
        (void)world.act(AutomationAction{.tool = AutomationAction::Tool::openApp, .name = app.name});
        world.advance(std::chrono::hours(1));
        tryEverything(world);
    }
    (void)world.harms();
    (void)world.isGoalReached();
}
