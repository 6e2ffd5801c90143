// SPDX-License-Identifier: MIT
// Bytes in memory, read as a file would be.
#pragma once

#include "Media/audio/ByteSource.h"

namespace quorvell {

/// Borrows its bytes.
class MemorySource : public ByteSource {
public:
    explicit MemorySource(std::span<const std::uint8_t> bytes)
        : m_bytes(bytes)
    {
    }

    std::uint64_t size() const override { return m_bytes.size(); }
    std::size_t read(std::uint64_t offset, std::span<std::uint8_t> into) const override;

private:
    std::span<const std::uint8_t> m_bytes;
};

} // namespace quorvell
