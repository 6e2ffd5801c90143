// SPDX-License-Identifier: MIT
// What was recorded, as one text.
#pragma once

#include "Quorvell/loop/EventLog.h"

#include <nlohmann/json.hpp>

#include <string>

namespace quorvell {

class WrittenLog : public EventLog {
public:
    void record(std::string_view name, const Json& fields) override { text += std::string(name) + dumpJson(fields); }
    bool has(std::string_view name) const { return text.find(name) != std::string::npos; }
    std::string text;
};

} // namespace quorvell
