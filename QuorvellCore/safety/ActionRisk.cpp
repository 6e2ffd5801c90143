// SPDX-License-Identifier: MIT
#include "QuorvellCore/safety/ActionRisk.h"

#include <utility>

namespace quorvell {

ActionRisk ActionRisk::askFirst(std::string question)
{
    return {Case::askFirst, std::move(question)};
}

ActionRisk ActionRisk::never(std::string reason)
{
    return {Case::never, std::move(reason)};
}

ActionRisk ActionRisk::strictest(ActionRisk a, ActionRisk b)
{
    return b.kind > a.kind ? std::move(b) : std::move(a);
}

ActionRisk ActionRisk::withQuestion(std::string question) const
{
    return kind == Case::askFirst ? askFirst(std::move(question)) : *this;
}

} // namespace quorvell
