// SPDX-License-Identifier: MIT
// An empty folder that goes with everything in it.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

namespace quorvell::test {

/// For tests that write and flush thousands of files, and are about what programs do rather than what power cuts do.
inline std::filesystem::path memoryDisk()
{
    constexpr std::uintmax_t enough = 256 * 1024 * 1024;
    std::error_code missing;
    const bool isUsable = !std::getenv("TMPDIR") && std::filesystem::space("/dev/shm", missing).available >= enough;
    return isUsable && !missing ? "/dev/shm" : std::filesystem::temp_directory_path();
}

class TemporaryFolder {
public:
    explicit TemporaryFolder(const std::filesystem::path& parent = std::filesystem::temp_directory_path())
    {
        std::string pattern = (parent / "quorvell-test-XXXXXX").string();
        m_path = ::mkdtemp(pattern.data());
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& path() const { return m_path; }
    std::string operator/(const std::string& name) const { return m_path + "/" + name; }

private:
    std::string m_path;
};

inline void writeText(const std::string& path, const std::string& text)
{
    std::ofstream(path, std::ios::binary) << text;
}

inline std::string readText(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

} // namespace quorvell::test
