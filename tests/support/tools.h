#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace vantoro::test {

/// A folder of its own, removed with everything in it.
class TempFolder {
public:
    TempFolder()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "vantoro-test-XXXXXX").string();
        m_path = ::mkdtemp(pattern.data());
    }
    ~TempFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    std::string operator/(const std::string& name) const { return (m_path / name).string(); }
    void write(const std::string& name, std::string_view content) const
    {
        std::filesystem::create_directories((m_path / name).parent_path());
        std::ofstream(m_path / name, std::ios::binary) << content;
    }
    std::string read(const std::string& name) const
    {
        std::ostringstream text;
        text << std::ifstream(m_path / name, std::ios::binary).rdbuf();
        return text.str();
    }
    /// Runs a shell command in the folder; true when it succeeded.
    bool run(const std::string& command) const
    {
        return std::system(("cd '" + m_path.string() + "' && { " + command + "; } >/dev/null 2>&1").c_str()) == 0;
    }

private:
    std::filesystem::path m_path;
};

inline bool hasTool(const std::string& name)
{
    return std::system(("command -v " + name + " >/dev/null 2>&1").c_str()) == 0;
}

/// Skips the test, saying why, on a machine without the tool that makes its archives.
#define REQUIRE_TOOL(name)                                                                                             \
    if (!::vantoro::test::hasTool(name))                                                                               \
    GTEST_SKIP() << "needs the tool " << name

}
