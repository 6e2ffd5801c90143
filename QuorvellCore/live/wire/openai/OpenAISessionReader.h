// SPDX-License-Identifier: MIT
// Reads a session object back into the options it was made from.
#pragma once

#include "QuorvellCore/live/wire/openai/OpenAILiveSetupOptions.h"
#include "QuorvellCore/text/Json.h"

#include <cstddef>
#include <optional>
#include <string>

namespace quorvell {

/// Used once; keeps the first problem.
class OpenAISessionReader {
public:
    static constexpr std::size_t maximumTools = 256;
    static constexpr int minimumSampleRate = 8000;
    static constexpr int maximumSampleRate = 48000;

    std::optional<OpenAILiveSetupOptions> read(const Json& session);
    /// Only the options of the backend, from a backend object.
    std::optional<OpenAILiveSetupOptions> readBackendAlone(const Json& backend);
    const std::string& problem() const { return m_problem; } ///< A sentence; empty when all went well.

private:
    void readAudio(const Json& session);
    void readBackend(const Json& backend);
    void readTools(const Json& backend);
    void readHistory(const Json& session);
    std::string requiredString(const Json& object, const char* key);
    void fail(std::string problem);

    OpenAILiveSetupOptions m_options;
    std::string m_problem;
};

} // namespace quorvell
