#include "Quorvell/app/DoctorFinding.h"

#include "Quorvell/app/ConversationText.h"

#include <nlohmann/json.hpp>

#include <algorithm>

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

} // namespace

std::string DoctorFinding::text() const
{
    constexpr std::size_t verdictWidth = 9;
    std::string line = nameOf(verdict);
    line.resize(verdictWidth, ' ');
    line += subject + ": " + ConversationText::printable(finding);
    if (!advice.empty())
        line += "\n" + std::string(verdictWidth, ' ') + ConversationText::printable(advice);
    return line;
}

Json DoctorFinding::json() const
{
    return {{"subject", subject}, {"verdict", nameOf(verdict)}, {"finding", finding}, {"advice", advice}};
}

int DoctorFinding::exitCode(const std::vector<DoctorFinding>& findings)
{
    return std::any_of(findings.begin(), findings.end(),
               [](const DoctorFinding& finding) { return finding.verdict == Verdict::broken; })
        ? 1
        : 0;
}

} // namespace quorvell
