// SPDX-License-Identifier: MIT
// Every format that the Qt installation reads.
#pragma once

#include "Quorvell/files/PictureConverter.h"

namespace quorvell {

/// Any thread.
class PictureFormats final : public PictureConverter {
public:
    static constexpr int maximumSide = 4096; ///< Pixels; larger pictures are scaled down.
    static constexpr int maximumMegabytes = 512; ///< Of memory while one is read; beyond that it is refused.

    std::optional<std::string> png(std::string_view picture) const override;
};

} // namespace quorvell
