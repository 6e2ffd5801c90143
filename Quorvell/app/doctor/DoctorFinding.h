// SPDX-License-Identifier: MIT
// One thing that was looked at.
#pragma once

#include "QuorvellCore/text/Json.h"

#include <cstddef>
#include <string>
#include <vector>

namespace quorvell {

struct DoctorFinding {
    enum class Verdict {
        works,
        limited, ///< The assistant works without it.
        broken, ///< Nothing works until it is mended.
    };

    std::string subject; ///< "microphone"
    Verdict verdict = Verdict::works;
    std::string finding; ///< What is, in a few words or a sentence.
    std::string advice{}; ///< What to do, when something is to be done.

    /// "ok       microphone: ..." and, on a line of its own, what to do. No line is wider than `columns`.
    std::string text(std::size_t columns) const;
    Json json() const;
    /// 1 when something is broken.
    static int exitCode(const std::vector<DoctorFinding>& findings);

    /// The last line: "2 are limited, 1 is broken; the rest is well."
    static std::string summary(const std::vector<DoctorFinding>& findings);

    bool operator==(const DoctorFinding&) const = default;
};

} // namespace quorvell
