// SPDX-License-Identifier: MIT
#include "LiveService/conversation/OfferedTools.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace quorvell {

OfferedTools offeredTools(const Json& declarations)
{
    OfferedTools names;
    for (const Json& declaration : declarations) {
        if (auto name = readString(declaration, "name"))
            names.insert(std::move(*name));
    }
    return names;
}

} // namespace quorvell
