// SPDX-License-Identifier: MIT
#include "Quorvell/practice/description/PracticeAddress.h"

#include "QuorvellCore/text/web/SiteMatch.h"
#include "QuorvellCore/text/web/WebAddress.h"

#include <algorithm>

namespace quorvell {

std::string PracticeAddress::key(std::string_view address)
{
    const auto parsed = WebAddress::parse(address);
    if (!parsed || !SiteMatch::host(address))
        return {};
    std::string path = parsed->path;
    while (path.ends_with('/'))
        path.pop_back();
    return SiteMatch::strip(parsed->host) + path + (parsed->query.empty() ? "" : "?" + parsed->query);
}

const PracticePlace* PracticeAddress::page(const PracticeApp& browser, std::string_view address)
{
    const std::string whole = key(address);
    const auto standingAt = [&](std::string_view wanted) {
        return std::find_if(browser.pages.begin(), browser.pages.end(),
            [&](const PracticePlace& page) { return key(page.name) == wanted; });
    };
    auto found = standingAt(whole);
    if (found == browser.pages.end())
        found = standingAt(std::string_view(whole).substr(0, whole.find('?')));
    return found == browser.pages.end() || whole.empty() ? nullptr : &*found;
}

} // namespace quorvell
