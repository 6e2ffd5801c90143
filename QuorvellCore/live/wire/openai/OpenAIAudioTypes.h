// SPDX-License-Identifier: MIT
// How messages with sound are called on the wire, by who writes and who reads them.
#pragma once

#include <string_view>

namespace quorvell {

struct OpenAIAudioTypes {
    static constexpr std::string_view input = "session.input_audio.append"; ///< From the client.
    static constexpr std::string_view output = "session.output_audio.delta"; ///< From the server.
};

} // namespace quorvell
