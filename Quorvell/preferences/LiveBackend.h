// SPDX-License-Identifier: MIT
// Whose live service holds the conversation; a setting.
#pragma once

namespace quorvell {

/// The one on this device speaks every protocol.
enum class LiveBackend {
    automatic, ///< By what the user gave keys for.
    openAI,
    gemini,
    onDevice,
};

} // namespace quorvell
