// SPDX-License-Identifier: MIT
#include "QuorvellCore/safety/words/GuardWords.h"

#include "QuorvellCore/safety/words/OneOf.h"

#include <vector>

namespace quorvell {

namespace {

using Text = std::string_view;

constexpr auto wordEndingTable = std::to_array<Text>({"", "s", "es", "ed", "ing", "ment", "ments", "er", "ers", "al"});
constexpr auto pluralEndings = std::to_array<Text>({"", "s"});
constexpr auto noEndings = std::to_array<Text>({""});

struct Danger {
    Text phrase;
    std::vector<Text> words;
};

/// In the order in which they are tried.
const std::array<Danger, 5>& dangers()
{
    static const std::array<Danger, 5> table{{
        {"spend or move money",
            {"pay", "purchase", "buy", "checkout", "check out", "place order", "place your order", "order now",
                "complete order", "confirm order", "submit order", "proceed to payment", "transfer", "wire", "donate",
                "gift card", "add card", "credit card", "debit card", "free trial", "start trial", "send money",
                "request money", "apple pay", "paypal", "venmo", "zelle", "bitcoin", "crypto", "cryptocurrency"}},
        {"change a password", {"password", "passcode", "passkey"}},
        {"let someone else into your computer",
            {"anydesk", "teamviewer", "screenconnect", "connectwise", "rustdesk", "ultraviewer", "logmein", "splashtop",
                "gotoassist", "zoho assist", "supremo", "quick assist", "remote access", "remote desktop",
                "remote control", "remote management", "remote login", "screen sharing", "share screen",
                "share your screen", "give control", "request control"}},
        {"install something", {"install", "upgrade"}},
        {"delete things", {"delete", "erase", "empty trash", "empty bin", "permanently"}},
    }};
    return table;
}

constexpr std::size_t letsOthersIn = 2;
constexpr std::size_t installs = 3;

constexpr auto cookieWords = std::to_array<Text>({"cookie"});

constexpr auto confirmWords =
    std::to_array<Text>({"send", "submit", "post", "publish", "share", "reply all", "upload", "download", "allow",
        "authorize", "grant", "accept", "agree", "confirm", "sign up", "register", "subscribe", "unsubscribe",
        "sign out", "log out", "logout", "block", "report", "remove", "trash", "move to bin", "call", "join"});

constexpr auto privateFieldWords =
    std::to_array<Text>({"card number", "card no", "cvv", "cvc", "security code", "expiry", "expiration", "ssn",
        "social security", "routing number", "account number", "sort code", "iban", "pin", "verification code",
        "one-time", "otp", "2fa", "authentication code", "passcode", "password", "national insurance", "tax id"});

constexpr auto searchVetoWords = std::to_array<Text>(
    {"send", "post", "reply", "pay", "payment", "transfer", "submit", "share", "publish", "tweet", "comment"});

constexpr auto messageWords =
    std::to_array<Text>({"message", "reply", "chat", "comment", "post", "tweet", "prompt", "compose", "send"});

constexpr auto addressBarNames =
    std::to_array<Text>({"address and search bar", "address bar", "smart search field", "search or enter website name",
        "search or enter address", "search or type a url", "search or type url", "search or type web address"});

constexpr auto messagingApps = std::to_array<Text>({"messages", "mail", "whatsapp", "slack", "telegram", "signal",
    "discord", "microsoft teams", "teams", "outlook", "microsoft outlook", "messenger", "skype", "zoom", "facetime"});

/// Security, privacy, passwords, logging in, installing, updates, sharing, and whatever lets others in.
constexpr auto guardedSettingWords = std::to_array<Text>({"security", "privacy", "password", "passcode", "passkey",
    "authentication", "login", "log in", "sign in", "install", "installation", "update", "updating", "upgrade", "share",
    "sharing", "remote access", "remote desktop", "remote control", "remote management"});

std::vector<Text> forbiddenWords()
{
    std::vector<Text> words;
    for (const Danger& danger : dangers())
        words.insert(words.end(), danger.words.begin(), danger.words.end());
    return words;
}

std::vector<Text> forbiddenProgramWords()
{
    std::vector<Text> words = dangers()[letsOthersIn].words;
    words.insert(words.end(), dangers()[installs].words.begin(), dangers()[installs].words.end());
    return words;
}

} // namespace

std::span<const std::string_view> GuardWords::wordEndings()
{
    return wordEndingTable;
}

const WordMatcher& GuardWords::forbidden()
{
    static const WordMatcher matcher(forbiddenWords(), wordEndingTable);
    return matcher;
}

std::string_view GuardWords::danger(std::size_t forbiddenWord)
{
    for (const Danger& danger : dangers()) {
        if (forbiddenWord < danger.words.size())
            return danger.phrase;
        forbiddenWord -= danger.words.size();
    }
    return {};
}

const WordMatcher& GuardWords::forbiddenPrograms()
{
    static const WordMatcher matcher(forbiddenProgramWords(), wordEndingTable);
    return matcher;
}

const WordMatcher& GuardWords::cookies()
{
    static const WordMatcher matcher(cookieWords, pluralEndings);
    return matcher;
}

const WordMatcher& GuardWords::confirming()
{
    static const WordMatcher matcher(confirmWords, pluralEndings);
    return matcher;
}

const WordMatcher& GuardWords::privateFields()
{
    static const WordMatcher matcher(privateFieldWords, pluralEndings);
    return matcher;
}

const WordMatcher& GuardWords::searchVetoes()
{
    static const WordMatcher matcher(searchVetoWords, noEndings, WordMatcher::Bounds::lettersAndDigits);
    return matcher;
}

const WordMatcher& GuardWords::messages()
{
    static const WordMatcher matcher(messageWords, noEndings, WordMatcher::Bounds::lettersAndDigits);
    return matcher;
}

const WordMatcher& GuardWords::guardedSettings()
{
    static const WordMatcher matcher(guardedSettingWords, wordEndingTable);
    return matcher;
}

bool GuardWords::isAddressBarName(std::string_view lower)
{
    return isOneOf(addressBarNames, lower);
}

bool GuardWords::isMessagingApp(std::string_view lower)
{
    return isOneOf(messagingApps, lower);
}

} // namespace quorvell
