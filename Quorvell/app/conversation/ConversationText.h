// SPDX-License-Identifier: MIT
// A conversation for people: replies as they are, what tools did dimmed, problems on the error stream.
#pragma once

#include "Quorvell/session/reports/SessionObserver.h"
#include "Quorvell/settings/TerminalColour.h"
#include "QuorvellCore/text/Json.h"

#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

namespace quorvell {

class ConversationText : public SessionObserver {
public:
    enum class Speakers { unnamed, named }; ///< Named where both sides appear: "You: ...".
    enum class Tools { told, whole }; ///< In a few words, or with all that they were asked and answered.

    static constexpr std::size_t longestNote = 160; ///< User-perceived characters of a line that nobody said.

    struct Style {
        TerminalColour colour = TerminalColour::none;
        Speakers speakers = Speakers::unnamed;
        Tools tools = Tools::told;
        /// How wide the terminal is now; without, lines are as long as they are.
        std::function<std::size_t()> columns{};
        /// Makes room for what is printed, where something else shares the terminal.
        std::function<void(const std::function<void()>& print)> aside{};
    };

    /// The streams are borrowed.
    ConversationText(std::ostream& out, std::ostream& errors, Style style);

    void restChanged(Doze doze) override;
    void helpModeChanged(HelpMode mode) override;
    void userSaid(const std::string& text, Words words) override;
    void assistantSaid(const std::string& text) override;
    void planChanged(const TaskPlan& plan) override;
    void toolCalled(const LiveFunctionCall& call) override;
    void toolAnswered(const LiveFunctionResponse& response) override;
    void problemArose(const std::string& sentence) override;
    void turnCompleted(TurnOutcome outcome) override;
    void conversationEnded(const SessionEnd& end) override;

    /// A line that nobody said.
    void note(const std::string& line);

private:
    enum class Look { plain, faint };

    void print(std::ostream& stream, const std::string& line);
    void printLine(std::ostream& stream, const std::string& line, std::size_t indent, Look look);

    std::ostream& m_out;
    std::ostream& m_errors;
    Style m_style;
};

} // namespace quorvell
