// SPDX-License-Identifier: MIT
// One regular file, kept open.
#pragma once

#include "Media/audio/ByteSource.h"

#include <memory>
#include <string>

namespace quorvell {

class FileSource : public ByteSource {
public:
    struct Made;
    /// Either a source or a sentence for the user. Pipes, devices and folders are refused: they may never end.
    static Made open(const std::string& path);
    ~FileSource() override;
    FileSource(const FileSource&) = delete;
    FileSource& operator=(const FileSource&) = delete;

    std::uint64_t size() const override { return m_size; }
    std::size_t read(std::uint64_t offset, std::span<std::uint8_t> into) const override;

private:
    FileSource(int descriptor, std::uint64_t size)
        : m_descriptor(descriptor)
        , m_size(size)
    {
    }

    int m_descriptor;
    std::uint64_t m_size; ///< When it was opened.
};

struct FileSource::Made {
    std::unique_ptr<FileSource> source;
    std::string problem;
};

} // namespace quorvell
