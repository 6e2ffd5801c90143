// SPDX-License-Identifier: MIT
// How a connection to a model's server ended.
#pragma once

namespace quorvell {

enum class ModelEnd {
    whole, ///< With a status of success; whether the answer is one is another matter.
    refused, ///< With any other status.
    unreachable,
    untrusted, ///< The certificate is not the host's, or nobody vouches for it.
    brokenOff,
};

} // namespace quorvell
