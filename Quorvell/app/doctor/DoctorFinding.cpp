// SPDX-License-Identifier: MIT
#include "Quorvell/app/doctor/DoctorFinding.h"

#include "Quorvell/app/conversation/ConversationText.h"
#include "QuorvellCore/text/ColumnText.h"
#include "QuorvellCore/text/PrintableText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

const char* nameOf(DoctorFinding::Verdict verdict)
{
    switch (verdict) {
    case DoctorFinding::Verdict::works:
        return "ok";
    case DoctorFinding::Verdict::limited:
        return "limited";
    case DoctorFinding::Verdict::broken:
        return "broken";
    }
    return "";
}

auto countOf(const std::vector<DoctorFinding>& findings, DoctorFinding::Verdict verdict)
{
    return std::count_if(findings.begin(), findings.end(),
        [verdict](const DoctorFinding& finding) { return finding.verdict == verdict; });
}

} // namespace

std::string DoctorFinding::text(std::size_t columns) const
{
    constexpr std::size_t verdictWidth = 9;
    std::string line = nameOf(verdict);
    line.resize(verdictWidth, ' ');
    line = wrappedToColumns(line + subject + ": " + printableText(finding), columns, verdictWidth);
    if (!advice.empty())
        line += "\n" + wrappedToColumns(std::string(verdictWidth, ' ') + printableText(advice), columns);
    return line;
}

Json DoctorFinding::json() const
{
    return {{"subject", subject}, {"verdict", nameOf(verdict)}, {"finding", finding}, {"advice", advice}};
}

int DoctorFinding::exitCode(const std::vector<DoctorFinding>& findings)
{
    return countOf(findings, Verdict::broken) > 0 ? 1 : 0;
}

std::string DoctorFinding::summary(const std::vector<DoctorFinding>& findings)
{
    std::string counts;
    for (const auto& [verdict, word] : {std::pair(Verdict::limited, "limited"), std::pair(Verdict::broken, "broken")})
        if (const auto count = countOf(findings, verdict); count > 0)
            counts += (counts.empty() ? "" : ", ") + std::to_string(count) + (count == 1 ? " is " : " are ") + word;
    return counts.empty() ? "All is well." : counts + "; the rest is well.";
}

} // namespace quorvell
