// SPDX-License-Identifier: MIT
// Catches conversations in writing that skip a line, hang, or end with the wrong exit code.
#include "Quorvell/app/chat/ChatConversation.h"

#include "FixtureTable.h"
#include "SessionBench.h"

#include <map>

namespace quorvell {
namespace {

/// Lines that are there as soon as they are asked for, and then the end, unless the writer is slow.
class ReadyLines : public LineSource {
public:
    explicit ReadyLines(Scheduler& scheduler)
        : m_scheduler(scheduler)
    {
    }
    void readNext(Report report) override
    {
        ++asked;
        m_report = std::move(report);
        if (lines.empty() && isSlow)
            return;
        m_scheduler.post([this] { give(lines.empty() ? std::nullopt : std::optional(typed(lines.front()))); });
    }
    bool dropTyped() override { return std::exchange(isHalfTyped, false); }
    void type(const std::string& line) { give(typed(line)); }

    std::deque<std::string> lines;
    bool isSlow = false;
    bool isHalfTyped = false;
    int asked = 0;

private:
    static TypedMessage typed(const std::string& line) { return {{{line}}, false}; }
    void give(const std::optional<TypedMessage>& message)
    {
        if (!lines.empty())
            lines.pop_front();
        std::exchange(m_report, nullptr)(message);
    }

    Scheduler& m_scheduler;
    Report m_report;
};

std::string onOneLine(std::string text)
{
    std::ranges::replace(text, '\n', '|');
    return text;
}

/// A conversation, one line at a time: what the partner, the service and the system do.
class Chat : public SessionBench {
public:
    std::vector<std::string> play(const std::string& line)
    {
        const auto [verb, rest] = test::verbAndRest(line);
        const auto found = verbs.find(verb);
        if (found == verbs.end())
            return {"?"};
        found->second(*this, rest);
        return news();
    }

    ReadyLines lines{scheduler};
    std::optional<ChatConversation> chat;

private:
    using Verb = void (*)(Chat&, const std::string&);
    static const std::map<std::string, Verb> verbs;

    void TestBody() override { }
    void begin(ChatConversation::Partner partner)
    {
        chat.emplace(ChatConversation::Ports{scheduler, lines,
                         [this](int code) { m_news.push_back("exit code " + std::to_string(code)); },
                         [this](const std::string& sentence) { m_news.push_back("tells " + onOneLine(sentence)); },
                         [] { return std::string("used"); }},
            partner);
        audience = &*chat;
        SessionSettings settings;
        settings.replies = SessionSettings::Replies::shown;
        settings.greeting = partner == ChatConversation::Partner::person ? SessionSettings::Greeting::spoken
                                                                         : SessionSettings::Greeting::none;
        chat->begin(make(settings));
        scheduler.settle();
    }
    void close(const LiveClosure& closure)
    {
        wire->closeWith(closure);
        scheduler.settle();
    }
    /// What happened since the last line.
    std::vector<std::string> news()
    {
        std::vector<std::string> all = std::exchange(m_news, {});
        const auto note = [&](int now, int& before, const char* what) {
            if (std::exchange(before, now) != now)
                all.push_back(what + std::to_string(now));
        };
        note(connectionsMade, m_connections, "connection ");
        note(lines.asked, m_asked, "asks for line ");
        if (wire.isThere())
            for (std::string& sent : std::exchange(wire->sent, {}))
                if (!sent.starts_with("open"))
                    all.push_back("sends " + sent.substr(sent.starts_with("message") ? sent.rfind("] ") + 2 : 0));
        return all;
    }

    std::vector<std::string> m_news;
    int m_connections = 0;
    int m_asked = 0;
};

using Partner = ChatConversation::Partner;
using Text = const std::string&;

const std::map<std::string, Chat::Verb> Chat::verbs{
    {"script", [](Chat& chat, Text) { chat.begin(Partner::script); }},
    {"person", [](Chat& chat, Text) { chat.begin(Partner::person); }},
    {"slowly", [](Chat& chat, Text) { chat.lines.isSlow = true; }},
    {"writes", [](Chat& chat, Text line) { chat.lines.lines.push_back(line); }},
    {"writesBlanks", [](Chat& chat, Text) { chat.lines.lines.push_back("  "); }},
    {"types",
        [](Chat& chat, Text line) {
            chat.lines.type(line);
            chat.scheduler.settle();
        }},
    {"half", [](Chat& chat, Text) { chat.lines.isHalfTyped = true; }},
    {"interrupt",
        [](Chat& chat, Text) {
            chat.chat->interrupt();
            chat.scheduler.advance(1s);
        }},
    {"leave", [](Chat& chat, Text) { chat.chat->leave(); }},
    {"ready", [](Chat& chat, Text) { chat.becomeReady(); }},
    {"works",
        [](Chat& chat, Text words) {
            chat.callTool("call_1", "nothing");
            chat.wire->reportText(words);
        }},
    {"answer",
        [](Chat& chat, Text words) {
            chat.wire->reportText(words);
            chat.wire->report(live_event::BackendIdle{});
            chat.scheduler.advance(1s);
        }},
    {"trouble",
        [](Chat& chat, Text sentence) {
            chat.wire->report(live_event::ServerError{{}, sentence});
            chat.wire->report(live_event::BackendIdle{});
        }},
    {"seconds", [](Chat& chat, Text count) { chat.scheduler.advance(std::chrono::seconds(std::stoi(count))); }},
    {"lost", [](Chat& chat, Text) { chat.close({.code = 1006, .reason = "gone", .sentence = "Lost."}); }},
    {"refused",
        [](Chat& chat, Text) {
            chat.close({.code = 401, .reason = "refused", .mustUserAct = true, .sentence = "Key refused."});
        }},
    {"closed", [](Chat& chat, Text) { chat.close({}); }},
    {"state",
        [](Chat& chat, Text) {
            chat.m_news.push_back(std::string(chat.controller->isTurnOpen() ? "in a turn" : "between turns") + ", "
                + std::to_string(chat.lines.lines.size()) + " lines left, "
                + (chat.lines.isHalfTyped ? "half a line typed" : "nothing typed") + ", "
                + std::string(nameOf(chat.controller->helpMode())));
        }},
};

TEST(ChatConversation, walksThroughConversations)
{
    test::playFixture("app/chat.txt",
        [] { return [chat = std::make_unique<Chat>()](const std::string& line) { return chat->play(line); }; });
}

} // namespace
} // namespace quorvell
