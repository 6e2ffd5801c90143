// SPDX-License-Identifier: MIT
// The pictures of notes, as files beside them.
#pragma once

#include "Quorvell/files/PictureConverter.h"

#include <string>
#include <string_view>

namespace quorvell {

inline constexpr const char* picturesFolderName = "Pictures";

struct [[nodiscard]] PictureWritten {
    std::string image; ///< Its path relative to the notebook folder.
    std::string problem; ///< When it could not be kept: what to do.
};

/// Keeps a picture as the PNG of the note with this id.
/// Blocks.
PictureWritten writePicture(
    const std::string& folder, const std::string& id, std::string_view picture, const PictureConverter* converter);

} // namespace quorvell
