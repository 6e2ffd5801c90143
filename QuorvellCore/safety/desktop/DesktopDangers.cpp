// SPDX-License-Identifier: MIT
#include "QuorvellCore/safety/desktop/DesktopDangers.h"

#include "QuorvellCore/safety/SafetyGuard.h"
#include "QuorvellCore/safety/SpokenLabel.h"
#include "QuorvellCore/safety/places/FileKind.h"
#include "QuorvellCore/safety/words/GuardWords.h"
#include "QuorvellCore/safety/words/JudgedText.h"
#include "QuorvellCore/safety/words/OneOf.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/TextMatch.h"

#include <array>
#include <string>

namespace quorvell {

namespace {

/// What cannot be taken back, costs, or speaks for the user, in words that buttons and menus of this desktop and of the
/// web use beside those of SafetyGuard.
constexpr auto askingWords = std::to_array<std::string_view>({// The computer and what runs on it
    "shut down", "shutdown", "power off", "turn off", "restart", "reboot", "suspend", "hibernate", "log off", "logoff",
    "switch user", "lock screen", "quit", "exit", "force stop", "force quit", "kill", "end process", "end task",
    "terminate", "close all", "close tab", "close window", "close tabs", "close windows", "run", "execute",
    "add extension", "add to chrome", "add to firefox", "get app",
    // What is lost
    "discard", "don't save", "don’t save", "do not save", "without saving", "overwrite", "replace", "revert", "reset",
    "restore defaults", "format", "partition", "wipe", "shred", "purge", "clear all", "clear history", "clear data",
    "clear browsing data", "clear list", "clean up", "free up space", "empty", "uninstall", "destroy", "roll back",
    "rollback", "restore backup", "detach", "unlink", "bin", "recycle bin", "wastebasket", "rubbish",
    // What costs
    "order", "book", "booking", "reserve", "reservation", "bid", "place bet", "bet", "rent", "hire", "invest",
    "withdraw", "deposit", "top up", "recharge", "redeem", "tip", "sell", "renew", "pledge", "contribute", "donation",
    "add funds", "add money", "cash out", "charge", "become a member", "support us", "try free", "try it free",
    "try for free", "start free", "start membership", "make offer", "apply for",
    // What speaks for the user, or changes an account
    "approve", "authorise", "sign", "sign in", "log in", "login", "deactivate", "close account", "close my account",
    "disable", "change", "save changes", "downgrade", "cancel subscription", "cancel plan", "cancel membership",
    "cancel booking", "cancel order", "enrol", "enroll", "apply now", "vote", "rsvp", "invite", "follow", "unfollow",
    "unfriend", "leave group", "leave meeting", "ban", "dial", "tweet", "retweet", "repost", "comment", "reply",
    "forward", "notify", "broadcast", "go live", "reveal", "update", "update all", "update now", "like", "add friend",
    "connect account", "link account",
    // What a warning holds back
    "open anyway", "run anyway", "proceed anyway", "continue anyway", "ignore", "trust", "add exception", "keep anyway",
    "visit anyway", "make executable", "allow executing", "proceed to"});

constexpr auto commandFieldWords = std::to_array<std::string_view>({"terminal", "console", "shell", "command line",
    "command prompt", "run command", "run a command", "command to run", "debug console"});

constexpr auto bareAgreements = std::to_array<std::string_view>(
    {"ok", "okay", "yes", "y", "yep", "sure", "continue", "proceed", "next", "done", "apply", "go", "go ahead", "do it",
        "finish", "complete", "start", "begin", "understood", "i understand", "got it", "i'm sure", "yes i'm sure",
        "i am sure", "yes i am sure", "yes please", "yes to all", "ok got it", "let's go", "all right"});

constexpr auto pasteWords = std::to_array<std::string_view>({"paste", "insert", "drop"});
constexpr auto noEndings = std::to_array<std::string_view>({""});
constexpr auto pluralEndings = std::to_array<std::string_view>({"", "s"});

const WordMatcher& asking()
{
    static const WordMatcher matcher(askingWords, noEndings);
    return matcher;
}

const WordMatcher& commandFields()
{
    static const WordMatcher matcher(commandFieldWords, pluralEndings);
    return matcher;
}

const WordMatcher& pasting()
{
    static const WordMatcher matcher(pasteWords, noEndings);
    return matcher;
}

ActionRisk onlyYou(std::string_view window)
{
    return ActionRisk::never(std::string(window) + ", so only you should use it.");
}

bool hasSignNobodySees(std::string_view text)
{
    return std::any_of(text.begin(), text.end(), [](char letter) {
        return (letter >= 0 && letter < ' ' && letter != '\n' && letter != '\r') || letter == 0x7F;
    });
}

/// What would run has to be heard whole before anybody can say yes to it.
ActionRisk runningRisk(std::string_view text)
{
    if (text.size() > SpokenLabel::longest || characterCount(text) > SpokenLabel::longest || hasSignNobodySees(text))
        return ActionRisk::never(
            "That could run more than I can tell you beforehand, so only you should type it there.");
    return ActionRisk::askFirst(
        "What is typed there runs as a command. Shall I type " + SpokenLabel::quoted(text) + "?");
}

} // namespace

ActionRisk DesktopDangers::openRisk(std::string_view app)
{
    switch (desktopPlaceOfApp(app)) {
    case DesktopPlace::terminal:
    case DesktopPlace::runDialog:
    case DesktopPlace::installer:
    case DesktopPlace::systemTool:
    case DesktopPlace::otherComputer:
        return ActionRisk::askFirst(SpokenLabel::quoted(app) + " can change important things. Shall I open it?");
    case DesktopPlace::authentication:
    case DesktopPlace::passwordManager: // Once it is in front, its secrets would be looked at.
        return ActionRisk::never(SpokenLabel::quoted(app) + " holds your passwords, so only you should open it.");
    case DesktopPlace::letsOthersIn:
        return ActionRisk::never(
            SpokenLabel::quoted(app) + " can let someone into the computer, so I won't open it for you.");
    case DesktopPlace::ordinary:
    case DesktopPlace::settings:
    case DesktopPlace::shell:
    case DesktopPlace::fileManager:
    case DesktopPlace::messenger:
        break;
    }
    return ActionRisk::safe();
}

ActionRisk DesktopDangers::pressRisk(DesktopPlace place)
{
    switch (place) {
    case DesktopPlace::runDialog:
        return ActionRisk::askFirst("This window runs programs. Shall I go ahead?");
    case DesktopPlace::installer:
        return ActionRisk::askFirst("This window installs and removes programs. Shall I go ahead?");
    case DesktopPlace::systemTool:
        return ActionRisk::askFirst("This window can change or erase what your computer needs. Shall I go ahead?");
    case DesktopPlace::authentication:
        return onlyYou("This window asks for your password");
    case DesktopPlace::passwordManager:
        return onlyYou("This window holds your passwords");
    case DesktopPlace::otherComputer:
        return onlyYou("This window works another computer, where I can't see what I press");
    case DesktopPlace::letsOthersIn:
        return onlyYou("This window can let someone into the computer");
    case DesktopPlace::ordinary:
    case DesktopPlace::terminal:
    case DesktopPlace::settings:
    case DesktopPlace::shell:
    case DesktopPlace::fileManager:
    case DesktopPlace::messenger:
        break;
    }
    return ActionRisk::safe();
}

ActionRisk DesktopDangers::typeRisk(DesktopPlace place, std::string_view text)
{
    if (place == DesktopPlace::terminal || place == DesktopPlace::runDialog)
        return runningRisk(text);
    // To look for a program installs none.
    return place == DesktopPlace::installer ? ActionRisk::safe() : pressRisk(place);
}

ActionRisk DesktopDangers::returnRisk(DesktopPlace place)
{
    if (place == DesktopPlace::terminal || place == DesktopPlace::runDialog)
        return ActionRisk::askFirst("Shall I press Return? That runs the command that stands there.");
    return pressRisk(place);
}

ActionRisk DesktopDangers::labelRiskIn(DesktopPlace place, std::string_view label)
{
    switch (place) {
    case DesktopPlace::terminal:
    case DesktopPlace::runDialog:
        return pasting().isIn(JudgedText(label))
            ? ActionRisk::askFirst("What is pasted there may run as a command. Shall I go ahead?")
            : ActionRisk::safe();
    case DesktopPlace::fileManager: {
        const std::string name = trimmed(label);
        const auto dot = name.rfind('.');
        const bool isFile = dot != std::string::npos && dot > 0 && dot + 1 < name.size() && name[dot + 1] != ' ';
        return isFile ? SafetyGuard::openFileRisk(name, FileMention::byUser) : ActionRisk::safe();
    }
    case DesktopPlace::shell:
        return ActionRisk::strictest(SafetyGuard::appRisk(label), openRisk(label));
    case DesktopPlace::ordinary:
    case DesktopPlace::authentication:
    case DesktopPlace::passwordManager:
    case DesktopPlace::installer:
    case DesktopPlace::systemTool:
    case DesktopPlace::settings:
    case DesktopPlace::otherComputer:
    case DesktopPlace::letsOthersIn:
    case DesktopPlace::messenger:
        break;
    }
    return ActionRisk::safe();
}

bool DesktopDangers::isCommandField(std::string_view label)
{
    return commandFields().isIn(JudgedText(label));
}

ActionRisk DesktopDangers::labelRisk(std::string_view label)
{
    return labelRisk(JudgedText(label), label);
}

ActionRisk DesktopDangers::labelRisk(const JudgedText& words, std::string_view label)
{
    if (GuardWords::cookies().firstInWritten(words.lower()) || !asking().isIn(words))
        return ActionRisk::safe();
    return ActionRisk::askFirst("Shall I press " + SpokenLabel::quoted(label) + " for you?");
}

bool DesktopDangers::isBareAgreement(std::string_view label)
{
    constexpr std::size_t longest = 64; // Bytes; none of them is as long.
    return label.size() <= longest && isOneOf(bareAgreements, TextMatch::normalized(label));
}

} // namespace quorvell
