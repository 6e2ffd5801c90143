// SPDX-License-Identifier: MIT
// Catches words that are taken for shown because they stand somewhere, and shown ones that are not recognised.
#include "QuorvellCore/automation/evidence/ShownWords.h"

#include <gtest/gtest.h>

namespace quorvell {

namespace {

AutomationCandidate shownElement(std::string role, std::string label, std::string value = {})
{
    return {"e", std::move(role), std::move(label), std::move(value), true, false, false};
}

AutomationObservation mailbox()
{
    return {.revision = 1,
        .app = "Thunderbird",
        .window = "Inbox - Thunderbird",
        .candidates = {shownElement("AXLink", "Sent"), shownElement("AXStaticText", "Message"),
            shownElement("AXStaticText", "3 unread messages"), shownElement("AXCheckBox", "Dark mode", "0")}};
}

AutomationObservation shop()
{
    AutomationCandidate secret = shownElement("AXTextField", "Card");
    secret.secure = true;
    secret.value = "ready for pickup";
    return {.revision = 1,
        .app = "Firefox",
        .window = "Thank you - Example Shop",
        .page = "https://shop.example/orders/4711",
        .candidates = {shownElement("AXHeading", "Your order was confirmed"),
            shownElement("AXStaticText", "Order number 4711"), shownElement("AXCheckBox", "Send me news", "1"),
            shownElement("AXStaticText", "Item removed"), secret}};
}

} // namespace

TEST(ShownWords, tellsWhatTheScreenSays)
{
    struct Row {
        const char* claim;
        AutomationObservation screen;
        bool isShown;
    };
    AutomationObservation dark = mailbox();
    dark.candidates = {shownElement("AXCheckBox", "Dark sidebar", "1"), shownElement("AXRadioButton", "Light", "1")};
    const Row rows[] = {
        {"The order confirmation with the order number 4711 is shown.", shop(), true},
        {"The order confirmation with the order number 4712 is shown.", shop(), false},
        {"The shop says thank you", shop(), true},
        {"\"Item removed\" appears", shop(), true},
        {"News are switched on: send me news is checked", shop(), true},
        {"Send me news is turned off", shop(), false},
        {"The inbox is open", mailbox(), true},
        {"Dark mode is on", mailbox(), false},
        {"Dark mode is off", mailbox(), true},
        {"A file unread messages 3 is in the folder", mailbox(), true},
        {"Dark mode is on", dark, false},
        // Words in two places say nothing together, and secrets are not read.
        {"The message was sent", mailbox(), false},
        {"sent", mailbox(), false},
        {"Ready for pickup", shop(), false},
        // What is not there cannot be seen.
        {"The unread messages are gone", mailbox(), false},
        {"There are no unread messages", mailbox(), false},
        // Says nothing.
        {"It is shown on the screen now", shop(), false},
        {"", shop(), false},
    };
    for (const Row& row : rows)
        EXPECT_EQ(ShownWords::of(row.claim, row.screen).isShown, row.isShown) << row.claim;
    EXPECT_FALSE(ShownWords::of(std::string(3'000, 'a'), shop()).isShown);
    EXPECT_TRUE(ShownWords::anywhere("the message is sent", mailbox()));
    EXPECT_FALSE(ShownWords::anywhere("on the page", mailbox()));
}

} // namespace quorvell
