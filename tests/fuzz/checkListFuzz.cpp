// SPDX-License-Identifier: MIT
// Any body stays as it is when it is read as a list, and a change to one item leaves every other one, and every line
// that is no box.
#include "QuorvellCore/notebook/CheckList.h"
#include "QuorvellCore/notebook/ListWords.h"
#include "fuzzing.h"

#include <algorithm>

using namespace quorvell;

void quorvell::search(std::string_view text)
{
    const CheckList list(text);
    require(list.body() == text);
    for (const CheckListItem& item : list.items())
        require(!item.text.empty() && item.text.find('\n') == std::string::npos);

    CheckList added = list;
    added.add({"one more", true});
    require(added.items().size() == list.items().size() + 1);
    require(std::ranges::find(added.items(), CheckListItem{"one more", true}) != added.items().end());
    require(CheckList(added.body()).items() == added.items());

    for (std::size_t place = 0; place < list.items().size() && place < 3; ++place) {
        CheckList changed = list;
        changed.setTicked(place, !list.items()[place].isTicked);
        changed.setTicked(place, list.items()[place].isTicked);
        require(changed.items() == list.items());
        changed.remove({place});
        auto left = list.items();
        left.erase(left.begin() + static_cast<std::ptrdiff_t>(place));
        require(changed.items() == left && changed.hasBoxes());
        (void)ListWords::ofItem(text.substr(0, 80), list.items()[place].text);
        (void)ListWords::ofName(list.items()[place].text, text.substr(0, 80));
    }
}
