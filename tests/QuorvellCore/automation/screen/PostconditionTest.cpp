// SPDX-License-Identifier: MIT
// Catches steps that count as done though nothing came of them, and the other way round.
#include "QuorvellCore/automation/screen/Postcondition.h"

#include "FixtureTable.h"
#include "QuorvellCore/automation/screen/ObservationBounds.h"

#include <gtest/gtest.h>

#include <map>

namespace quorvell {

namespace {

AutomationObservation mailScreen()
{
    return {.revision = 1,
        .app = "Mail",
        .window = "Inbox",
        .page = "https://shop.example.com/Cart?item=1",
        .candidates = {{"1", "AXButton", "Send", "", true, false, false},
            {"2", "AXTextField", "Subject:", "Lunch, maybe", true, true, false},
            {"3", "AXTextField", "To", "", true, false, false}}};
}

} // namespace

TEST(AutomationObservation, stateKeyTellsWhatIsShownAndNothingElse)
{
    const AutomationObservation screen = mailScreen();
    EXPECT_EQ(screen.stateKey(),
        "Mail\nInbox\nhttps://shop.example.com/Cart?item=1\nAXButton|Send||true|false\n"
        "AXTextField|Subject:|Lunch, maybe|true|true\nAXTextField|To||true|false");
    AutomationObservation rescan = screen;
    rescan.revision = 2;
    for (AutomationCandidate& candidate : rescan.candidates)
        candidate.id += "0";
    EXPECT_EQ(rescan.stateKey(), screen.stateKey());
    rescan.page.reset();
    EXPECT_NE(rescan.stateKey(), screen.stateKey());
    EXPECT_EQ(AutomationObservation{}.stateKey(), "\n\n");
}

TEST(AutomationObservation, redactedKeepsNoSecret)
{
    const struct {
        AutomationCandidate candidate;
        bool isKept;
    } rows[] = {
        {{.role = "AXTextField", .label = "Subject", .value = "Lunch"}, true},
        {{.role = "AXTextField", .label = "Subject", .value = "Lunch", .secure = true}, false},
        {{.role = "AXSecureTextField", .label = "Name", .value = "hunter2"}, false},
        {{.role = "AXTextField", .label = "Card number", .value = "1234"}, false},
        {{.role = "AXComboBox", .label = "Your PIN:", .value = "1234"}, false},
        {{.role = "AXStaticText", .label = "Card number", .value = "ends in 1234"}, true}, // nobody types there
        {{.role = "AXStaticText", .value = "4111 1111 1111 1111"}, false},
        {{.role = "AXTextArea", .label = "Notes", .value = "4111-1111-1111-1111\n"}, false},
        {{.role = "AXTextArea", .label = "Notes", .value = "4111 1111 1111 1112"}, true},
        {{.role = "AXTextArea", .label = "Notes", .value = "The card: 4111 1111 1111 1111"}, true},
    };
    for (const auto& row : rows) {
        AutomationObservation expected{.window = "Secure", .candidates = {row.candidate}};
        const AutomationObservation redacted = expected.redacted();
        expected.candidates[0].value = row.isKept ? row.candidate.value : "";
        EXPECT_EQ(redacted, expected) << row.candidate.label << ": " << row.candidate.value;
    }
}

TEST(Postcondition, holdsWhereTheStepDidIt)
{
    const AutomationObservation before = mailScreen();
    std::map<std::string, AutomationObservation> screens{
        {"after the step", before}, {"seen again", before}, {"without a page", before}};
    auto& candidates = screens["after the step"].candidates;
    candidates[0].label = "Sent!";
    candidates[1].value = "Lunch, maybe tomorrow";
    candidates[1].id = "9";
    screens["seen again"].revision = 2;
    screens["seen again"].candidates[1].id = "9";
    screens["without a page"].page.reset();
    for (const test::FixtureRow& row : test::fixtureRows("automation/postconditions.txt")) {
        const auto comma = row.name.find(", ");
        for (const std::string& line : row.lines) {
            const auto blank = line.find(' ');
            const Postcondition condition{postconditionKind(line.substr(0, blank)).value(), line.substr(blank + 1)};
            const AutomationObservation& after = screens[row.name.substr(0, comma)];
            EXPECT_EQ(condition.verified(before, after), row.name.ends_with("holds")) << row.name << ": " << line;
        }
    }
}

TEST(ObservationBounds, cutWhatAPageHoldsTooMuchOf)
{
    constexpr std::size_t shown = ObservationBounds::mostCandidates;
    const auto with = [](AutomationCandidate candidate) {
        AutomationObservation screen = mailScreen();
        screen.candidates.insert(screen.candidates.begin(), std::move(candidate));
        return screen;
    };
    const auto many = [](std::size_t count, const std::string& value) {
        AutomationObservation screen = mailScreen();
        for (std::size_t index = screen.candidates.size(); index < count; ++index)
            screen.candidates.push_back({.id = "n" + std::to_string(index), .value = value});
        return screen;
    };
    AutomationObservation sharedID = many(100'000, "");
    sharedID.candidates.back().id = "1";
    AutomationObservation titles = mailScreen();
    titles.window = std::string(2'000'000, 'w');
    titles.page = "https://example.com/" + std::string(100'000, 'p');

    const struct {
        const char* name;
        AutomationObservation screen;
        std::size_t candidates;
        std::size_t told;
    } rows[] = {
        {"an ordinary screen", many(2'000, "some text"), 2'000, 0},
        {"too many elements", many(100'000, ""), shown, 1},
        {"an id that one of the missing elements has too", sharedID, shown - 1, 1},
        {"more text than is taken", many(shown, std::string(4'096, 'v')), 1'026, 1},
        {"a label whose end nobody would look at", with({.label = std::string(5'000, 'x') + " delete all"}), 3, 1},
        {"a value", with({.value = std::string(1'000'000, 'x')}), 4, 1},
        {"a value that is one endless character",
            with({.value = "x" +
                    [] {
                        std::string marks;
                        for (int mark = 0; mark < 500'000; ++mark)
                            marks += "\u0301";
                        return marks;
                    }()}),
            4, 1},
        {"titles and addresses", titles, 3, 2},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        AutomationObservation screen = row.screen;
        EXPECT_EQ(ObservationBounds::keep(screen).size(), row.told);
        EXPECT_EQ(screen.candidates.size(), row.candidates);
        EXPECT_EQ(screen == row.screen, row.told == 0);
        EXPECT_LT(screen.stateKey().size(), 5u << 20);
        const AutomationObservation once = screen;
        EXPECT_EQ(ObservationBounds::keep(screen).size(), 0u) << "what was cut is within the bounds";
        EXPECT_EQ(screen, once);
    }
    EXPECT_EQ(
        ObservationBounds::keep(sharedID).front(), "The screen has 100000 elements; only 4999 of them are listed.");
}

} // namespace quorvell
