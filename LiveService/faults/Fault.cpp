// SPDX-License-Identifier: MIT
#include "LiveService/faults/Fault.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

namespace quorvell {

namespace {

using Kind = Fault::Kind;
using std::chrono::milliseconds;

enum class Value { none, time, count, status, code, percent, times };

struct Row {
    std::string_view name;
    Kind kind;
    Value value;
    int usual; ///< Milliseconds, messages or per cent; 0 where a value must be given.
    const char* help;
};

constexpr int usualMessages = 5;
constexpr milliseconds usualTimeLeft{10'000};

constexpr Row rows[] = {
    {"slow", Kind::slow, Value::time, 2000, "slow[=TIME]            everything is sent that much later (2s)"},
    {"refuse", Kind::refuse, Value::status, 0,
        "refuse=STATUS[:NAME]   the request gets this HTTP status, for the setting NAME"},
    {"drop", Kind::drop, Value::count, usualMessages,
        "drop[=N]               the connection is cut after N messages (5)"},
    {"close", Kind::close, Value::code, 0,
        "close=CODE[:N]         closed with CODE after N messages (5); 1006 cuts it"},
    {"half-open", Kind::halfOpen, Value::count, usualMessages,
        "half-open[=N]          after N messages (5) it stays, but is dead"},
    {"stuck", Kind::stuck, Value::count, usualMessages,
        "stuck[=N]              after N messages (5) it stays and answers pings, but says nothing more"},
    {"asleep", Kind::asleep, Value::time, 10'000,
        "asleep[=TIME]          after TIME (10s) it is dead, as for a computer that slept"},
    {"late-pong", Kind::latePong, Value::time, 30'000,
        "late-pong[=TIME]       pings are answered that much later (30s)"},
    {"go-away", Kind::goAway, Value::times, 5000,
        "go-away[=TIME[:TIME]]  the end is announced (5s) and comes (10s later)"},
    {"reject-handle", Kind::rejectHandle, Value::none, 0, "reject-handle          no earlier session can be taken up"},
    {"malformed", Kind::malformed, Value::count, usualMessages, "malformed[=N]          no JSON after N messages (5)"},
    {"oversized", Kind::oversized, Value::count, usualMessages, "oversized[=N]          17 MiB after N messages (5)"},
    {"duplicate", Kind::duplicate, Value::none, 0, "duplicate              every message comes twice"},
    {"reorder", Kind::reorder, Value::none, 0, "reorder                of two messages the second comes first"},
    {"close-in-tool", Kind::closeInTool, Value::none, 0, "close-in-tool          closed while a tool runs"},
    {"reject-create", Kind::rejectCreate, Value::count, 1,
        "reject-create[=N]      the Nth wish for a response is refused (1)"},
    {"udp-blocked", Kind::udpBlocked, Value::none, 0, "udp-blocked            answers to WebRTC offers lead nowhere"},
    {"age", Kind::age, Value::time, 60'000, "age[=TIME]             the session ends after TIME (60s)"},
    {"context", Kind::context, Value::percent, 90, "context[=PERCENT]      so much of the context counts as used (90)"},
};

std::optional<int> readNumber(std::string_view text)
{
    int value = 0;
    const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool isWhole = problem == std::errc() && end == text.data() + text.size();
    return isWhole && value >= 0 && value <= 86'400'000 ? std::optional(value) : std::nullopt;
}

/// "500ms", "2s", "2".
std::optional<milliseconds> readTime(std::string_view text)
{
    const bool isFine = text.ends_with("ms");
    if (isFine)
        text.remove_suffix(2);
    else if (text.ends_with("s"))
        text.remove_suffix(1);
    const auto value = readNumber(text);
    if (!value || (!isFine && *value > 86'400))
        return std::nullopt;
    return milliseconds(isFine ? *value : *value * 1000);
}

bool isHttpFailure(int status)
{
    return status >= 400 && status < 600;
}

bool isCloseCode(int code)
{
    return code >= 1000 && code < 5000;
}

/// Reads "VALUE[:VALUE]" as the row wants it. False when it is something else.
bool readValue(const Row& row, std::string_view text, Fault& fault)
{
    const std::size_t colon = text.find(':');
    const std::string_view first = text.substr(0, colon);
    const std::string_view second = colon == std::string_view::npos ? std::string_view() : text.substr(colon + 1);
    const auto time = readTime(first);
    const auto number = readNumber(first);
    switch (row.value) {
    case Value::none:
        return false;
    case Value::time:
        fault.time = time.value_or(milliseconds());
        return time && second.empty();
    case Value::times:
        fault.time = time.value_or(milliseconds());
        fault.timeLeft = readTime(second).value_or(usualTimeLeft);
        return time && (second.empty() || readTime(second));
    case Value::count:
    case Value::percent:
        fault.count = number.value_or(0);
        return number && *number > 0 && second.empty() && (row.value == Value::count || *number <= 100);
    case Value::status:
        fault.count = number.value_or(0);
        fault.setting = second;
        return number && isHttpFailure(*number);
    case Value::code:
        fault.code = number.value_or(0);
        fault.count = readNumber(second).value_or(usualMessages);
        return number && isCloseCode(*number) && (second.empty() || readNumber(second));
    }
    return false;
}

} // namespace

std::optional<Fault> Fault::parse(std::string_view text, std::string& problem)
{
    const std::string whole(text);
    Fault fault;
    if (const std::size_t at = text.rfind('@'); at != std::string_view::npos) {
        const auto session = readNumber(text.substr(at + 1));
        if (!session || *session == 0) {
            problem = "\"" + whole + "\": after @ comes the number of a session, from 1 on.";
            return std::nullopt;
        }
        fault.session = *session;
        text = text.substr(0, at);
    }
    const std::size_t equals = text.find('=');
    const auto row = std::ranges::find(rows, text.substr(0, equals), &Row::name);
    if (row == std::end(rows)) {
        problem = "There is no fault \"" + whole + "\". --help lists them.";
        return std::nullopt;
    }
    fault.kind = row->kind;
    fault.time = milliseconds(row->usual);
    fault.timeLeft = usualTimeLeft;
    fault.count = row->usual;
    const bool mayBeMissing = row->value == Value::none || row->usual > 0;
    if (equals == std::string_view::npos ? mayBeMissing : readValue(*row, text.substr(equals + 1), fault))
        return fault;
    problem = "\"" + whole + "\" is written like this: " + row->help;
    return std::nullopt;
}

std::string Fault::help()
{
    std::string text =
        "Faults, each \"NAME[=VALUE][@SESSION]\"; without @ in every session, with @2 in the second only.\n"
        "Times are written 500ms or 2s.\n";
    for (const Row& row : rows)
        text += std::string("  ") + row.help + "\n";
    return text;
}

SessionFaults SessionFaults::of(const std::vector<Fault>& all, int session)
{
    SessionFaults faults;
    std::ranges::copy_if(all, std::back_inserter(faults.list),
        [session](const Fault& fault) { return fault.session == 0 || fault.session == session; });
    return faults;
}

const Fault* SessionFaults::find(Kind kind) const
{
    const auto found = std::ranges::find(list, kind, &Fault::kind);
    return found != list.end() ? &*found : nullptr;
}

} // namespace quorvell
