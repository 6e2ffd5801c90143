// SPDX-License-Identifier: MIT
// The waste basket as file managers know it.
#pragma once

#include "Quorvell/files/Trash.h"

namespace quorvell {

/// Any thread; no event loop is needed.
class DesktopTrash final : public Trash {
public:
    bool put(const std::string& path) override;
};

} // namespace quorvell
