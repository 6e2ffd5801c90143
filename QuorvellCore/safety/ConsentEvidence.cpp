// SPDX-License-Identifier: MIT
#include "QuorvellCore/safety/ConsentEvidence.h"

#include "QuorvellCore/safety/SpokenWords.h"

#include <string>

namespace quorvell {

namespace {

bool sharesAWord(std::string_view one, std::string_view other)
{
    const std::string words = spokenWords(one);
    const std::string voice = spokenWords(other);
    for (std::size_t start = 0; start + 1 < words.size();) {
        const std::size_t end = words.find(' ', start + 1);
        if (voice.find(words.substr(start, end - start + 1)) != std::string::npos)
            return true;
        start = end;
    }
    return false;
}

ConsentEvidence::Verdict judgeSpoken(const HeardUtterance& heard, std::chrono::milliseconds askedAt)
{
    using Verdict = ConsentEvidence::Verdict;
    if (!heard.sound)
        return Verdict::unheard;
    if (heard.sound->from < askedAt || heard.sound->from < heard.voiceUntil)
        return Verdict::tooEarly;
    return sharesAWord(heard.text, heard.voiceWords) ? Verdict::echoed : Verdict::counts;
}

} // namespace

ConsentEvidence::Verdict ConsentEvidence::judge(const HeardUtterance& heard, std::chrono::milliseconds askedAt)
{
    switch (heard.how) {
    case HeardUtterance::How::spoken:
        return judgeSpoken(heard, askedAt);
    case HeardUtterance::How::typed:
        return spokenWords(heard.ownWords) == " " ? Verdict::pasted : Verdict::counts;
    case HeardUtterance::How::pressed:
        return Verdict::counts;
    }
    return Verdict::unheard;
}

std::string_view nameOf(ConsentEvidence::Verdict verdict)
{
    switch (verdict) {
    case ConsentEvidence::Verdict::counts:
        return "counts";
    case ConsentEvidence::Verdict::pasted:
        return "pasted";
    case ConsentEvidence::Verdict::unheard:
        return "unheard";
    case ConsentEvidence::Verdict::tooEarly:
        return "too_early";
    case ConsentEvidence::Verdict::echoed:
        return "echoed";
    }
    return "";
}

} // namespace quorvell
