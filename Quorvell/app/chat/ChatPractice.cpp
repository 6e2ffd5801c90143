// SPDX-License-Identifier: MIT
#include "Quorvell/app/chat/ChatPractice.h"

#include "Quorvell/app/practice/PracticeText.h"

#include <utility>

namespace quorvell {

ChatPractice::ChatPractice(
    PracticeDescription world, Scheduler& scheduler, std::function<void(const std::string&)> tell)
    : m_scheduler(scheduler)
    , m_begun(scheduler.now())
    , m_world(std::move(world))
    , m_screen(m_world, scheduler)
    , m_tell(std::move(tell))
{
}

std::vector<std::string> ChatPractice::applications() const
{
    std::vector<std::string> names;
    for (const PracticeApp& app : m_world.description().apps)
        names.push_back(app.name);
    return names;
}

void ChatPractice::show()
{
    m_world.advance(m_scheduler.now() - m_begun);
    std::string text = PracticeText::of(m_world.view());
    const auto& consequences = m_world.consequences();
    for (; m_told < consequences.size(); ++m_told)
        text += "\n! " + PracticeText::of(consequences[m_told]);
    m_tell(text);
}

} // namespace quorvell
