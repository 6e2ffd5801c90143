// SPDX-License-Identifier: MIT
#include "Household.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <thread>

namespace quorvell {

namespace {

using namespace std::chrono_literals;

constexpr auto slowest = 20s; ///< Real time, for a tool that waits for its files.
constexpr int mostCalls = 30; ///< That one utterance may lead to.

std::vector<std::unique_ptr<CalendarSource>> folderSources(const std::string& path)
{
    std::vector<std::unique_ptr<CalendarSource>> sources;
    sources.push_back(std::make_unique<CalendarFolder>(path));
    return sources;
}

/// The value of the first line of that name, whatever parameters it has.
std::string valueIn(const std::string& text, const std::string& name)
{
    for (const std::string& start : {"\n" + name + ":", "\n" + name + ";"}) {
        const std::size_t found = text.find(start, text.find("BEGIN:VEVENT"));
        if (found == text.npos)
            continue;
        const std::size_t end = text.find_first_of("\r\n", found + 1);
        const std::string line = text.substr(found + 1, end - found - 1);
        return line.substr(line.find(':') + 1);
    }
    return "";
}

/// "20261127T130000" as "2026-11-27 13:00"
std::string dateOf(const std::string& written)
{
    if (written.size() < 8)
        return written;
    const std::string day = written.substr(0, 4) + "-" + written.substr(4, 2) + "-" + written.substr(6, 2);
    return written.size() < 13 ? day : day + " " + written.substr(9, 2) + ":" + written.substr(11, 2);
}

} // namespace

Household::Household(const std::string& now)
{
    m_clock.wallClockAtStart = instant(now);
    auto opened = NotebookStore::open(m_notes.path(), *m_worker, m_clock);
    EXPECT_EQ(opened.problem, "");
    m_store = std::move(opened.store);
    m_agenda = std::make_unique<Agenda>(folderSources(m_events.path()), m_clock.posts.poster());
    m_search = std::make_unique<NotebookSearch>(*m_store, m_clock);
    const auto clock = [this] { return m_clock.wallClock(); };
    const auto freshID = [this] {
        std::array<char, 16> text{};
        std::snprintf(text.data(), text.size(), "%012x", ++m_ids);
        return std::string(text.data());
    };
    registerReminderTools(m_registry, *m_store, {clock, m_calendar, freshID, &m_undo});
    registerAgendaTools(m_registry, *m_agenda, *m_store, {clock, m_calendar, freshID, &m_heard, {}, &m_undo});
    registerNotebookTools(m_registry, *m_store,
        {.now = clock,
            .newID = freshID,
            .calendar = m_calendar,
            .search = m_search.get(),
            .consent = &m_heard,
            .undo = &m_undo});
}

Instant Household::instant(const std::string& localTime) const
{
    const auto date = DateParts::parse(localTime);
    EXPECT_TRUE(date) << localTime;
    return date ? date->instant(m_calendar).value_or(Instant{}) : Instant{};
}

template <typename Test> bool Household::settle(const Test& isDone)
{
    const auto end = std::chrono::steady_clock::now() + slowest;
    while (!isDone() && std::chrono::steady_clock::now() < end) {
        m_clock.posts.runPosted();
        m_clock.advance(1ms); // What the tools put off.
        if (!isDone())
            std::this_thread::sleep_for(200us);
    }
    return isDone();
}

ToolResult Household::carryOut(const ToolRequest& call)
{
    const ToolHandler* owner = m_registry.owner(call.name);
    if (!owner)
        return ToolResult::failed("There is no such tool.");
    const auto answer = std::make_shared<std::optional<ToolResult>>();
    (*owner)(LiveFunctionCall::fromArgumentsText("1", call.name, call.arguments, false),
        ToolReply([answer](const Json& result) { *answer = ToolResult::of(result); }));
    EXPECT_TRUE(settle([&] { return answer->has_value(); })) << call.name << " did not answer";
    return answer->value_or(ToolResult::failed("no answer"));
}

std::string Household::say(const std::string& words)
{
    m_clock.advance(5s);
    m_heard.userSaid({words, words, HeardUtterance::How::typed});
    const RuleSurroundings around{{m_clock.wallClock(), m_calendar}, [this] {
                                      std::set<std::string, std::less<>> names;
                                      for (std::string& name : m_registry.names())
                                          names.insert(std::move(name));
                                      return names;
                                  }()};
    RuleStep step = RequestRules::answerWords(words, m_memory, around);
    for (int calls = 0; calls < mostCalls && std::holds_alternative<ToolRequest>(step.answer); ++calls) {
        const ToolRequest call = std::get<ToolRequest>(step.answer);
        step = RequestRules::answerResult(call, dumpJson(carryOut(call).json()), step.memory, around);
    }
    EXPECT_TRUE(std::holds_alternative<std::string>(step.answer)) << "goes round in circles: " << words;
    m_memory = step.memory;
    const auto* text = std::get_if<std::string>(&step.answer);
    m_heard.assistantSaid(text ? *text : "");
    m_clock.advance(5s);
    return text ? *text : "";
}

std::string Household::localTime(Instant instant) const
{
    return DateParts::from(instant, m_calendar).text();
}

std::string Household::shown(const Note& note) const
{
    if (note.remindAt || note.trigger) {
        const std::string then = note.then.value_or("");
        std::string kind = then.starts_with("ring timer") ? "timer" : then.starts_with("ring") ? "alarm" : "reminder";
        return kind + " " + (note.remindAt ? localTime(*note.remindAt) : *note.trigger) + " " + note.title
            + (note.repeatRule ? " (" + *note.repeatRule + ")" : "");
    }
    std::string line = std::string(storedText(note.kind)) + " " + note.title + ": ";
    for (const char letter : note.body)
        line += letter == '\n' ? "; " : std::string(1, letter);
    while (line.ends_with("; ") || line.ends_with(": "))
        line.resize(line.size() - 2);
    return line;
}

std::vector<std::string> Household::events() const
{
    std::vector<std::string> lines;
    for (const auto& entry : std::filesystem::directory_iterator(m_events.path())) {
        if (entry.path().extension() != ".ics")
            continue;
        const std::string text = test::readText(entry.path());
        const std::string rule = valueIn(text, "RRULE");
        const std::string place = valueIn(text, "LOCATION");
        lines.push_back("event " + dateOf(valueIn(text, "DTSTART")) + " to " + dateOf(valueIn(text, "DTEND")) + " "
            + valueIn(text, "SUMMARY") + (place.empty() ? "" : " @ " + place)
            + (rule.empty() ? "" : " (" + rule + ")"));
    }
    return lines;
}

std::vector<std::string> Household::state() const
{
    std::vector<std::string> lines = events();
    for (const Note& note : m_store->notes())
        if (!note.doneAt) // What is done is no matter of anybody's any more.
            lines.push_back(shown(note));
    std::ranges::sort(lines);
    return lines;
}

} // namespace quorvell
