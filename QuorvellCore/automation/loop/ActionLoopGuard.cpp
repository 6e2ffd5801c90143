// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/loop/ActionLoopGuard.h"

#include "QuorvellCore/text/PrintableText.h"

#include <algorithm>
#include <functional>

namespace quorvell {

namespace {

constexpr std::size_t shortestRound = 2;
constexpr std::size_t longestRound = 6;
constexpr std::size_t mostRounds = 3;

std::size_t hashed(std::string_view text)
{
    return std::hash<std::string_view>{}(text);
}

/// What an action is called comes from the screen too: the letters of a single character may fill megabytes.
std::string shownText(std::string_view action)
{
    constexpr std::size_t longestLooked = 2'048; // bytes
    return printableLine(action.substr(0, longestLooked), ActionLoopGuard::longestShown);
}

std::string cycleText(const std::string& actions)
{
    return "You've now gone round the same actions three times (" + actions
        + ") without getting anywhere. Stop: look at the screen (include_image true) for a message saying it's already "
          "done or can't be done (\"Already added\", an error), and do something different, like a way that does it "
          "all at once, or tell them.";
}

std::string failingText(int count)
{
    return "That didn't work " + std::to_string(count)
        + " times on this screen. Don't repeat it: switch to another way (a keyboard shortcut with press_key, "
          "choose_menu, right-clicking for its menu, scrolling to it, or a screenshot and click_at_spot), or tell them "
          "and ask.";
}

std::string returningText(int count)
{
    return "You've done this from this same screen " + std::to_string(count)
        + " times and each time ended up back here, so it isn't working. Don't do it again. Look at the screen with "
          "include_image true to see what really happens (a redirect back, a pop-up, a region or cookie chooser), then "
          "try a different way, like a direct web address, another link or the site's menu, or tell them what's in the "
          "way.";
}

std::string repeatingText(std::string_view action, int count)
{
    return "You've already done “" + shownText(action) + "” " + std::to_string(count)
        + " times and still aren't where you want to be, so it isn't working. Don't do it again. Look at the screen "
          "with include_image true to see what really happens after it, then try a different way (a direct web "
          "address, another link, the site's menu, a search), or tell them briefly what's in the way and ask.";
}

std::string unchangedText(int count)
{
    return "The last " + std::to_string(count)
        + " actions changed nothing on screen. Stop, tell them what you tried, and ask how they'd like to go on.";
}

std::string stalledText(int count)
{
    return "You've done " + std::to_string(count)
        + " actions without finishing a step of your plan or finding anything out. Stop and rethink: update the plan "
          "with update_plan if the way you're going isn't working, or tell them briefly where it's stuck and ask.";
}

std::string longSilenceText(int count)
{
    return "You've done " + std::to_string(count)
        + " things without hearing from them. Tell them briefly how far you've got and ask whether to carry on.";
}

std::string checkInText(int count)
{
    return "You've done " + std::to_string(count)
        + " things without checking in. If this is a longer task, write a plan with update_plan (steps and how you'll "
          "know it's done) and carry on; otherwise tell them briefly what you've done and ask whether to carry on.";
}

} // namespace

std::optional<std::string> ActionLoopGuard::refusal(
    std::string_view action, std::string_view screen, std::optional<int> planStall, int step) const
{
    if (const auto actions = cycle(action, step))
        return cycleText(*actions);
    if (auto text = repetition(action, screen, step))
        return text;
    if (m_unchanged >= mostUnchanged)
        return unchangedText(m_unchanged);
    return silence(planStall);
}

std::optional<std::string> ActionLoopGuard::repetition(std::string_view action, std::string_view screen, int step) const
{
    const Count count = countOf(action, screen, step);
    if (count.failedHere > 1)
        return failingText(count.failedHere);
    if (action.starts_with("press_key ") || action.starts_with("scroll "))
        return std::nullopt; // Repeating these is normal.
    if (count.cameBack >= 2)
        return returningText(count.cameBack);
    return count.done > 2 ? std::optional(repeatingText(action, count.done)) : std::nullopt;
}

std::optional<std::string> ActionLoopGuard::silence(std::optional<int> planStall) const
{
    const int attempt = m_sinceHeard + 1;
    if (!planStall)
        return attempt >= mostWithoutPlan ? std::optional(checkInText(attempt)) : std::nullopt;
    if (*planStall >= longestStall)
        return stalledText(*planStall);
    return attempt >= mostWithPlan ? std::optional(longSilenceText(attempt)) : std::nullopt;
}

void ActionLoopGuard::record(
    std::string_view action, std::string_view screen, std::string_view result, Outcome outcome, int step)
{
    m_recent.push_back({hashed(action), hashed(screen), hashed(result), outcome, step, shownText(action)});
    if (m_recent.size() > mostWithPlan)
        m_recent.pop_front();
    m_unchanged = screen == result ? m_unchanged + 1 : 0;
    ++m_sinceHeard;
    ++m_planStall;
}

void ActionLoopGuard::heardThem()
{
    m_sinceHeard = 0;
    m_unchanged = 0;
}

void ActionLoopGuard::progressed()
{
    m_planStall = 0;
}

std::vector<const ActionLoopGuard::Done*> ActionLoopGuard::run(int step) const
{
    std::vector<const Done*> run;
    for (auto done = m_recent.rbegin(); done != m_recent.rend() && done->step == step; ++done)
        run.push_back(&*done);
    return run;
}

ActionLoopGuard::Count ActionLoopGuard::countOf(std::string_view action, std::string_view screen, int step) const
{
    const std::size_t asked = hashed(action);
    const std::size_t here = hashed(screen);
    Count count;
    bool isHereAgain = false;
    for (const Done* done : run(step)) {
        isHereAgain = isHereAgain || done->result == here;
        if (done->action != asked)
            continue;
        ++count.done;
        if (done->screen != here)
            continue;
        count.cameBack += isHereAgain ? 1 : 0;
        count.failedHere += done->outcome == Outcome::failed ? 1 : 0;
    }
    return count;
}

std::optional<std::string> ActionLoopGuard::cycle(std::string_view completedBy, int step) const
{
    const auto recent = run(step); // newest first
    std::vector<std::size_t> actions{hashed(completedBy)};
    for (std::size_t index = 0; index < recent.size() && actions.size() < longestRound * mostRounds; ++index)
        actions.push_back(recent[index]->action);

    for (std::size_t period = shortestRound; period <= longestRound && period * mostRounds <= actions.size();
         ++period) {
        const auto end = actions.begin() + static_cast<std::ptrdiff_t>(period * (mostRounds - 1));
        if (!std::equal(actions.begin(), end, actions.begin() + static_cast<std::ptrdiff_t>(period)))
            continue;
        // A round of one and the same action is a repetition, which other rules know about.
        if (std::equal(actions.begin() + 1, actions.begin() + static_cast<std::ptrdiff_t>(period), actions.begin()))
            continue;
        std::string round;
        for (std::size_t back = period - 1; back > 0; --back)
            round += recent[back - 1]->shown + ", ";
        return round + shownText(completedBy);
    }
    return std::nullopt;
}

} // namespace quorvell
