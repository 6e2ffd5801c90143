// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/TaskPlan.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/TextMatch.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

/// On one line, trimmed and cut.
std::string tidied(std::string_view text)
{
    std::string line = repairUtf8(text);
    std::replace_if(
        line.begin(), line.end(), [](char letter) { return letter == '\n' || letter == '\r' || letter == '\t'; }, ' ');
    return firstCharacters(trimmed(line), TaskPlan::longestText);
}

/// The texts of a list in which models put whatever they like: nothing but texts counts, blank ones do not.
std::vector<std::string> textsOf(const Json& list)
{
    std::vector<std::string> texts;
    const auto add = [&texts](const Json& entry) {
        if (auto text = tidied(readString(entry).value_or("")); !text.empty())
            texts.push_back(std::move(text));
    };
    if (list.is_array())
        std::for_each(list.begin(), list.end(), add);
    else
        add(list);
    return texts;
}

bool isSameText(std::string_view left, std::string_view right)
{
    return TextMatch::normalized(left) == TextMatch::normalized(right);
}

} // namespace

std::optional<TaskPlan> TaskPlan::create(const Json& arguments)
{
    TaskPlan plan;
    plan.goal = tidied(readString(arguments, "goal").value_or(""));
    plan.update(arguments);
    return plan.goal.empty() || plan.steps.empty() ? std::nullopt : std::optional(std::move(plan));
}

TaskPlanChange TaskPlan::update(const Json& changes)
{
    TaskPlanChange change;
    if (const Json* list = memberOf(changes, "steps"))
        replaceSteps(*list, change);
    if (const Json* numbers = memberOf(changes, "done"))
        markDone(*numbers, change);
    if (const Json* list = memberOf(changes, "facts"))
        addFacts(*list, change);
    auto seen = tidied(readString(changes, "done_when").value_or(""));
    change.changedDoneWhen = !seen.empty() && seen != doneWhen;
    if (change.changedDoneWhen)
        doneWhen = std::move(seen);
    return change;
}

void TaskPlan::replaceSteps(const Json& list, TaskPlanChange& change)
{
    std::vector<Step> replaced;
    std::vector<std::string> texts = textsOf(list);
    if (texts.size() > mostSteps) {
        texts.resize(mostSteps);
        change.problems.push_back("A plan has at most " + std::to_string(mostSteps) + " steps; the rest was left out.");
    }
    for (std::string& text : texts) {
        const auto known =
            std::find_if(steps.begin(), steps.end(), [&](const Step& step) { return isSameText(step.text, text); });
        replaced.push_back({std::move(text), known != steps.end() && known->done});
    }
    if (replaced.empty()) {
        change.problems.emplace_back("The new list of steps has no step, so the old one stays.");
        return;
    }
    change.replacedSteps = replaced != steps;
    steps = std::move(replaced);
}

void TaskPlan::markDone(const Json& numbers, TaskPlanChange& change)
{
    const auto mark = [&](const Json& entry) {
        const auto number = readInteger(entry);
        if (!number || *number < 1 || static_cast<std::uint64_t>(*number) > steps.size()) {
            if (change.problems.size() < mostSteps)
                change.problems.push_back("There is no step " + firstCharacters(dumpJson(entry), 20)
                    + "; the steps are 1 to " + std::to_string(steps.size()) + ".");
            return;
        }
        const auto index = static_cast<std::size_t>(*number) - 1;
        if (!std::exchange(steps[index].done, true))
            change.finished.push_back(index + 1);
    };
    if (numbers.is_array())
        std::for_each(numbers.begin(), numbers.end(), mark);
    else if (!numbers.is_null())
        mark(numbers);
}

void TaskPlan::addFacts(const Json& list, TaskPlanChange& change)
{
    for (std::string& fact : textsOf(list)) {
        const bool isKnown =
            std::any_of(facts.begin(), facts.end(), [&](const std::string& known) { return isSameText(known, fact); });
        if (isKnown || change.learned.size() == mostFacts)
            continue;
        facts.push_back(fact);
        change.learned.push_back(std::move(fact));
    }
    if (facts.size() > mostFacts)
        facts.erase(facts.begin(), facts.end() - static_cast<std::ptrdiff_t>(mostFacts));
}

bool TaskPlan::isFinished() const
{
    return !nextStep();
}

std::optional<std::size_t> TaskPlan::nextStep() const
{
    const auto next = std::find_if(steps.begin(), steps.end(), [](const Step& step) { return !step.done; });
    return next == steps.end() ? std::nullopt : std::optional(static_cast<std::size_t>(next - steps.begin()) + 1);
}

Json TaskPlan::json() const
{
    Json list = Json::array();
    for (const Step& step : steps)
        list.push_back({{"number", list.size() + 1}, {"text", step.text}, {"done", step.done}});
    Json plan{{"goal", goal}, {"steps", std::move(list)}, {"facts", facts}};
    if (!doneWhen.empty())
        plan["done_when"] = doneWhen;
    return plan;
}

std::string TaskPlan::summary() const
{
    std::string text = "Goal: " + goal;
    for (std::size_t index = 0; index < steps.size(); ++index)
        text += "\n" + std::to_string(index + 1) + (steps[index].done ? ". [done] " : ". [open] ") + steps[index].text;
    for (const std::string& fact : facts)
        text += "\nFact: " + fact;
    return doneWhen.empty() ? text : text + "\nDone when: " + doneWhen;
}

} // namespace quorvell
