// SPDX-License-Identifier: MIT
#include "Quorvell/practice/world/PracticeView.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/web/SiteMatch.h"

#include <algorithm>

namespace quorvell {

namespace {

bool isFoldShown(const PracticeElement& element, const PracticeState& state)
{
    return !element.fold || *element.fold == state.scrolled();
}

std::string valueOf(const PracticeElement& element, const std::string& label, const PracticeState& state)
{
    std::string value = state.fact(element.fact);
    if (element.role == "AXRadioButton") // One fact for all of a group: the label of the one that is chosen.
        return value == label ? "1" : "0";
    if (!element.isSecure)
        return value;
    std::string dots;
    for (std::size_t count = characterCount(value); count > 0; --count)
        dots += "•";
    return dots;
}

void add(std::vector<PracticeShown>& shown, const PracticeElement& element, const PracticeState& state)
{
    if (!isFoldShown(element, state) || !state.hold(element.shownWhen))
        return;
    PracticeShown one;
    one.element = &element;
    one.label = state.filled(element.label);
    one.value = valueOf(element, one.label, state);
    one.description = state.filled(element.description);
    one.isEnabled = element.isEnabled && state.hold(element.enabledWhen);
    one.isFocused = one.isEnabled && !element.name.empty() && element.name == state.focus();
    shown.push_back(std::move(one));
}

/// In rows, the first on top; who has a place of their own is there.
void layOut(std::vector<PracticeShown>& shown)
{
    constexpr double left = 50, right = 950, top = 50, height = 900, tallest = 40;
    const double row = std::min(tallest, height / static_cast<double>(std::max<std::size_t>(shown.size(), 1)));
    for (std::size_t place = 0; place < shown.size(); ++place) {
        const double above = top + row * static_cast<double>(place);
        const auto& own = shown[place].element;
        shown[place].area = own && own->area ? *own->area : ScreenArea{left, above, right, above + row};
    }
}

PageLocation locationOf(const PracticeTab& tab, const PracticeState& state)
{
    PageLocation location;
    location.address = tab.address();
    location.site = SiteMatch::host(location.address);
    location.loaded = tab.loadedAt <= state.now();
    if (location.loaded)
        location.title = tab.place ? state.filled(tab.place->title) : tab.problem;
    return location;
}

} // namespace

PracticeView PracticeView::of(const PracticeState& state)
{
    PracticeView view;
    if (const PracticeRunning* front = state.front()) {
        view.app = front->app->name;
        view.identifier = front->app->identifier;
        if (const PracticeTab* tab = state.tab()) {
            view.page = locationOf(*tab, state);
            view.window = view.page->title;
        }
        if (!front->windows.empty())
            view.window = state.filled(front->windows.back()->title);
        else if (front->app->addressBar)
            add(view.elements, *front->app->addressBar, state);
        for (const PracticeMenuItem& item : front->app->menus) {
            if (state.hold(item.shownWhen))
                view.menus.push_back(&item);
        }
    }
    if (const PracticePlace* place = state.place()) {
        for (const PracticeElement& element : place->elements)
            add(view.elements, element, state);
    }
    for (std::string& text : state.notifications()) {
        PracticeShown notification;
        notification.label = std::move(text);
        view.elements.push_back(std::move(notification));
    }
    layOut(view.elements);
    return view;
}

const PracticeShown* PracticeView::shown(std::string_view name) const
{
    const auto found = std::find_if(elements.begin(), elements.end(),
        [&](const PracticeShown& one) { return one.element && one.element->name == name; });
    return found == elements.end() ? nullptr : &*found;
}

const PracticeShown* PracticeView::at(double x, double y) const
{
    const PracticeShown* smallest = nullptr;
    for (const PracticeShown& one : elements) {
        if (one.area.contains(x, y) && (!smallest || one.area.size() <= smallest->area.size()))
            smallest = &one;
    }
    return smallest;
}

} // namespace quorvell
