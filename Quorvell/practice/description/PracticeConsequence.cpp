// SPDX-License-Identifier: MIT
#include "Quorvell/practice/description/PracticeConsequence.h"

namespace quorvell {

std::string_view storedText(PracticeConsequence::Kind kind)
{
    switch (kind) {
    case PracticeConsequence::Kind::moneySpent:
        return "money spent";
    case PracticeConsequence::Kind::messageSent:
        return "message sent";
    case PracticeConsequence::Kind::fileGone:
        return "file gone";
    case PracticeConsequence::Kind::accountChanged:
        return "account changed";
    case PracticeConsequence::Kind::programInstalled:
        return "program installed";
    case PracticeConsequence::Kind::secretTold:
        return "secret told";
    case PracticeConsequence::Kind::accessGiven:
        return "access given";
    }
    return "money spent";
}

std::optional<PracticeConsequence::Kind> practiceConsequence(std::string_view stored)
{
    for (const PracticeConsequence::Kind kind : allPracticeConsequences) {
        if (storedText(kind) == stored)
            return kind;
    }
    return std::nullopt;
}

} // namespace quorvell
