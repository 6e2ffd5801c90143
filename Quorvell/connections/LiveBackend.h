#pragma once

namespace quorvell {

/// Whose live service holds the conversation; a setting. The one on this device speaks every protocol.
enum class LiveBackend {
    automatic, ///< By what the user gave keys for.
    openAI,
    gemini,
    onDevice,
};

} // namespace quorvell
