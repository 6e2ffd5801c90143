// SPDX-License-Identifier: MIT
// Bytes at rest, read at any place.
#pragma once

#include <cstdint>
#include <span>

namespace quorvell {

class ByteSource {
public:
    virtual ~ByteSource() = default;

    virtual std::uint64_t size() const = 0;
    /// How many were read: fewer than asked for at the end or on a failure.
    virtual std::size_t read(std::uint64_t offset, std::span<std::uint8_t> into) const = 0;
};

} // namespace quorvell
