// SPDX-License-Identifier: MIT
#include "Quorvell/actions/tools/SeeingTools.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/OneLine.h"
#include "QuorvellCore/text/TextMatch.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace quorvell {

namespace {

constexpr std::size_t longestPlace = 300; ///< User-perceived characters.
constexpr std::size_t longestWords = 500; ///< Likewise, of what is looked for.

/// At the end of a character.
std::string upTo(std::string text, std::size_t bytes)
{
    if (text.size() > bytes)
        text.resize(bytes);
    return repairUtf8(text);
}

bool shows(const ScreenLook& look, const std::string& words)
{
    const auto holds = [&words](std::string_view text) {
        return TextMatch::normalized(text).find(words) != std::string::npos;
    };
    return holds(look.observation.window)
        || std::ranges::any_of(look.observation.candidates,
            [&](const AutomationCandidate& candidate) { return holds(candidate.label) || holds(candidate.value); });
}

std::string seconds(double count)
{
    const auto whole = static_cast<int>(count);
    return std::to_string(whole) + (whole == 1 ? " second" : " seconds");
}

} // namespace

SeeingTools::SeeingTools(ActionToolPorts ports)
    : m_ports(std::move(ports))
    , m_self(std::make_shared<SeeingTools*>(this))
{
}

void SeeingTools::lookAtScreen(const LiveFunctionCall& call, ToolReply reply)
{
    const bool isFine = readBool(call.args, "fine_detail").value_or(false);
    const bool wantsPicture = isFine || readBool(call.args, "include_image").value_or(false);
    LookWish wish;
    if (wantsPicture && m_ports.show)
        wish.image = isFine ? LookWish::Image::fine : LookWish::Image::overview;
    if (readBool(call.args, "include_menus").value_or(false))
        wish.menus = LookWish::Menus::listed;
    m_ports.pipeline.look(wish,
        [self = std::weak_ptr(m_self), wantsPicture, shared = std::make_shared<ToolReply>(std::move(reply))](
            const std::variant<ScreenLook, ScreenProblem>& seen) {
            const auto alive = self.lock();
            if (!alive)
                return;
            if (const auto* problem = std::get_if<ScreenProblem>(&seen))
                return shared->fail(problem->sentence);
            const ActionToolPorts& ports = (*alive)->m_ports;
            const ScreenLook& look = std::get<ScreenLook>(seen);
            const bool isShown = look.image && ports.show;
            if (isShown)
                ports.show(*look.image);
            ToolResult result(ToolStatus::looked);
            result.add("screen",
                ports.teller.tell(
                    look, LookText::whole, isShown ? LookTeller::Picture::shown : LookTeller::Picture::none));
            if (wantsPicture && !isShown)
                result.advise("No picture can be shown to you here; go by the elements.");
            shared->answer(result);
        });
}

void SeeingTools::readPage(const LiveFunctionCall& call, ToolReply reply)
{
    const auto from = readInteger(call.args, "from").value_or(0);
    if (from < 0)
        return reply.fail("from is taken from the last answer, or left out.");
    m_ports.screen.read(static_cast<std::size_t>(from),
        [self = std::weak_ptr(m_self), shared = std::make_shared<ToolReply>(std::move(reply))](
            std::variant<ScreenText, ScreenProblem> read) {
            const auto alive = self.lock();
            if (!alive)
                return;
            if (const auto* problem = std::get_if<ScreenProblem>(&read))
                return shared->fail(problem->sentence);
            ScreenText& text = std::get<ScreenText>(read);
            const bool isCut = text.text.size() > longestText;
            ToolResult result(ToolStatus::looked);
            result.add("text", (*alive)->m_ports.teller.fenced(upTo(std::move(text.text), longestText)));
            if (text.next)
                result.add("next", *text.next);
            if (isCut)
                result.advise("The end of this stretch is left out: it was too long.");
            shared->answer(result);
        });
}

void SeeingTools::findOnPage(const LiveFunctionCall& call, ToolReply reply)
{
    const std::string words = firstCharacters(repairUtf8(call.string("text").value_or("")), longestWords);
    if (trimmed(words).empty())
        return reply.fail("text is missing.");
    m_ports.screen.find(words,
        [self = std::weak_ptr(m_self), shared = std::make_shared<ToolReply>(std::move(reply))](
            const std::variant<std::vector<std::string>, ScreenProblem>& found) {
            const auto alive = self.lock();
            if (!alive)
                return;
            if (const auto* problem = std::get_if<ScreenProblem>(&found))
                return shared->fail(problem->sentence);
            const auto& places = std::get<std::vector<std::string>>(found);
            std::string text;
            for (std::size_t place = 0; place < places.size() && place < mostPlaces; ++place)
                text += firstCharacters(onOneLine(places[place]), longestPlace) + '\n';
            ToolResult result(ToolStatus::looked);
            result.add("count", places.size());
            if (!text.empty())
                result.add("places", (*alive)->m_ports.teller.fenced(std::move(text)));
            shared->answer(result);
        });
}

void SeeingTools::listTabs(const LiveFunctionCall&, ToolReply reply)
{
    m_ports.screen.listTabs([self = std::weak_ptr(m_self), shared = std::make_shared<ToolReply>(std::move(reply))](
                                const std::variant<std::vector<ScreenTab>, ScreenProblem>& listed) {
        const auto alive = self.lock();
        if (!alive)
            return;
        if (const auto* problem = std::get_if<ScreenProblem>(&listed))
            return shared->fail(problem->sentence);
        const auto& tabs = std::get<std::vector<ScreenTab>>(listed);
        const auto quoted = [](const std::string& text) {
            return dumpJson(Json(firstCharacters(onOneLine(text), longestPlace)));
        };
        std::string text;
        for (std::size_t tab = 0; tab < tabs.size() && tab < mostTabs; ++tab)
            text += quoted(tabs[tab].title) + " at " + quoted(tabs[tab].address)
                + (tabs[tab].isFront ? ", in front\n" : "\n");
        ToolResult result(ToolStatus::looked);
        result.add("count", tabs.size());
        if (!text.empty())
            result.add("tabs", (*alive)->m_ports.teller.fenced(std::move(text)));
        shared->answer(result);
    });
}

// ---- Waiting

struct SeeingTools::Wait {
    ToolReply reply;
    std::string expect; ///< Normalised; empty: until it has come to rest.
    double seconds;
    SessionTime until;
    TimerHandle next{};
};

void SeeingTools::waitForScreen(const LiveFunctionCall& call, ToolReply reply)
{
    const double wish = call.number("seconds").value_or(usualWait);
    const double seconds = wish >= 1 ? std::min(wish, longestWait) : 1; // Neither is what is no number.
    const auto time = std::chrono::milliseconds(static_cast<int>(seconds * 1'000));
    std::string expect = TextMatch::normalized(firstCharacters(call.string("expect").value_or(""), longestWords));
    waitOn(std::make_shared<Wait>(Wait{std::move(reply), std::move(expect), seconds, m_ports.scheduler.now() + time}));
}

void SeeingTools::waitOn(const std::shared_ptr<Wait>& wait)
{
    m_ports.pipeline.look({.wait = LookWish::Wait::settled},
        [self = std::weak_ptr(m_self), wait](const std::variant<ScreenLook, ScreenProblem>& seen) {
            const auto alive = self.lock();
            if (!alive)
                return;
            if (const auto* problem = std::get_if<ScreenProblem>(&seen))
                return wait->reply.fail(problem->sentence);
            (*alive)->looked(wait, std::get<ScreenLook>(seen));
        });
}

void SeeingTools::looked(const std::shared_ptr<Wait>& wait, const ScreenLook& look)
{
    const bool isThere = wait->expect.empty() || shows(look, wait->expect);
    const bool isOver = m_ports.scheduler.now() + waitPeriod > wait->until;
    if (!isThere && !isOver) {
        wait->next = m_ports.scheduler.after(waitPeriod, [self = std::weak_ptr(m_self), wait] {
            if (const auto alive = self.lock())
                (*alive)->waitOn(wait);
        });
        return;
    }
    ToolResult result(ToolStatus::looked);
    if (!wait->expect.empty())
        result.advise(isThere ? "What you expected shows."
                              : "What you expected did not show within " + seconds(wait->seconds) + ".");
    result.add("verified", isThere && !wait->expect.empty());
    result.add("screen", m_ports.teller.tell(look));
    wait->reply.answer(result);
}

} // namespace quorvell
