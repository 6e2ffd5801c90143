// SPDX-License-Identifier: MIT
#include "Quorvell/records/UsageText.h"

#include <cmath>

namespace quorvell {

namespace {

constexpr std::size_t monthLength = 7; ///< Of "2026-11".

std::string sentenceOf(const UsageBook::Day& used, UsageText::Service service)
{
    std::string text = UsageText::duration(used.spokenSeconds) + " of spoken conversation";
    if (used.microphoneSeconds > 0 || used.voiceSeconds > 0)
        text += " (" + UsageText::duration(used.microphoneSeconds) + " of your voice sent, "
            + UsageText::duration(used.voiceSeconds) + " of answers)";
    if (used.billedSeconds > 0 && service == UsageText::Service::hosted)
        text += ", " + UsageText::duration(used.billedSeconds) + " billed";
    if (used.tokens > 0)
        text += ", " + std::to_string(used.tokens) + " tokens";
    if (used.images > 0)
        text += ", " + std::to_string(used.images) + (used.images == 1 ? " picture" : " pictures");
    return text + ".";
}

} // namespace

std::string UsageText::duration(double seconds)
{
    const auto whole = static_cast<long long>(std::llround(seconds));
    const long long minutes = whole / 60;
    return (minutes > 0 ? std::to_string(minutes) + " min " : std::string()) + std::to_string(whole % 60) + " s";
}

std::string UsageText::ofDays(const UsageBook& book, std::string_view today, Service service)
{
    return "Today: " + sentenceOf(book.sumOf(today), service)
        + "\nThis month: " + sentenceOf(book.sumOf(today.substr(0, monthLength)), service);
}

std::string UsageText::ofConversation(const SessionUsage& usage, Service service)
{
    auto used = UsageBook::Day::of(usage);
    used.spokenSeconds = usage.connectedSeconds;
    return "This conversation: " + sentenceOf(used, service);
}

} // namespace quorvell
