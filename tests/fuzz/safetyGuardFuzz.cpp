// SPDX-License-Identifier: MIT
// Any label, address, text and file name: what may be opened is a plain web address, what forbids goes on forbidding
// whatever stands around it, and the patterns that are read by hand find what the expressions for them find.
#include "QuorvellCore/safety/SafetyGuard.h"
#include "QuorvellCore/safety/SpokenConsent.h"
#include "QuorvellCore/safety/places/JudgedAddress.h"
#include "QuorvellCore/safety/words/LabelPatterns.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "QuorvellCore/text/web/SiteMatch.h"
#include "fuzzing.h"

namespace quorvell {

namespace {

bool isSpoken(const ActionRisk& risk)
{
    return risk.isSafe() == risk.text.empty() && risk.text.size() < 20000;
}

void searchAddress(std::string_view text)
{
    const ActionRisk risk = SafetyGuard::websiteRisk(text);
    require(isSpoken(risk) && isSpoken(SafetyGuard::addressBarRisk(text)));
    const auto judged = JudgedAddress::read(text);
    require(judged.has_value() == (risk.kind != ActionRisk::Case::never));
    if (!judged)
        return;
    const auto host = SiteMatch::host(judged->text);
    require(host && (*host == judged->site || *host == judged->site + "."));
    require(SafetyGuard::websiteRisk(judged->text) == risk);
    require(SafetyGuard::siteRisk(text).isSafe() || !risk.isSafe());
}

void searchLabel(std::string_view text)
{
    const ActionRisk risk = SafetyGuard::risk(text, "AXButton");
    require(isSpoken(risk));
    const std::string longer = "\u00a0" + std::string(text) + " - ";
    require(SafetyGuard::risk(longer, "AXButton").kind >= risk.kind || SafetyGuard::isNavigationLink(longer, ""));
    require(SafetyGuard::isNavigationLink(longer + "delete", "")
        || SafetyGuard::risk(longer + "delete", "AXButton").kind == ActionRisk::Case::never);
}

void searchPatterns(std::string_view text)
{
    static const Pattern price(R"([$£€₹¥]\s?\d|\d\s?(usd|eur|gbp|inr)\b)");
    static const Pattern site(R"(\b[a-z0-9-]+\.(com|org|net|gov|edu|io|co|uk|in|np|de|fr|au|ca)\b)");
    static const Pattern number(R"(\d{6,})");
    constexpr std::size_t longest = 256; // On longer ones an expression may give up.
    const std::string lower = lowerCased(text.substr(0, longest));
    require(hasPrice(lower) || !price.find(lower));
    require(!hasSiteName(lower) || site.find(lower));
    require(hasLongNumber(lower) || !number.find(lower));
}

} // namespace

void search(std::string_view text)
{
    searchAddress(text);
    searchLabel(text);
    searchPatterns(text);
    require(isSpoken(SafetyGuard::textRisk(text)) && isSpoken(SafetyGuard::fieldRisk(text, text)));
    require(isSpoken(SafetyGuard::keyRisk(text, 8, false)) && isSpoken(SafetyGuard::appRisk(text)));
    require(isSpoken(SafetyGuard::frontAppRisk("org.gnome.Settings", text)));
    require(isSpoken(SafetyGuard::openFileRisk(text, FileMention::byUser)));
    require(isSpoken(SafetyGuard::returnInTextBoxRisk(text, "AXTextField", text, text, "")));
    require(!SafetyGuard::isAffirmative(text) || !SpokenConsent::hesitates(text));
    require(!SafetyGuard::isAffirmative(std::string(text) + " no"));
}

} // namespace quorvell
