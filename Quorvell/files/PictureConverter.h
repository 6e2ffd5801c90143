// SPDX-License-Identifier: MIT
// Makes a PNG of a picture in any common format.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// Called on the file worker.
class PictureConverter {
public:
    virtual ~PictureConverter() = default;

    /// Nothing when the bytes are no picture that is known, or one that is too large.
    virtual std::optional<std::string> png(std::string_view picture) const = 0;
};

} // namespace quorvell
