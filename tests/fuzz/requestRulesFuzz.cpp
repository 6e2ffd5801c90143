// SPDX-License-Identifier: MIT
// What somebody says, and what a tool answers, each taken for anything: the rules always have a next step, and call no
// tool that the session did not offer.
#include "Understanding/requests/RequestRules.h"
#include "fuzzing.h"

#include <chrono>
#include <variant>

namespace {

using namespace quorvell;

RuleSurroundings surroundings()
{
    const std::chrono::sys_days day = std::chrono::year(2026) / 11 / 21;
    return {{day + std::chrono::hours(12), *Calendar::create("Europe/Berlin", "en_US")},
        {"set_reminder", "keep_note", "find_in_notebook", "read_note", "remember_about_them", "whats_on",
            "find_free_time", "add_event", "change_event"}};
}

RuleStep checked(RuleStep step, const RuleSurroundings& around)
{
    if (const auto* request = std::get_if<ToolRequest>(&step.answer))
        require(around.offers(request->name));
    else
        require(!std::get<std::string>(step.answer).empty());
    return step;
}

} // namespace

void quorvell::search(std::string_view given)
{
    static const RuleSurroundings around = surroundings();
    // Lines are turns of one conversation; one that begins with "{" is the answer to the tool that was called.
    const std::string text(given);
    RuleStep step{std::string(), {}};
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        const std::string line = text.substr(start, end - start);
        const auto* call = std::get_if<ToolRequest>(&step.answer);
        const bool isResult = call && line.starts_with('{');
        step = checked(isResult ? RequestRules::answerResult(*call, line, step.memory, around)
                                : RequestRules::answerWords(line, step.memory, around),
            around);
        start = end + 1;
    }
}
