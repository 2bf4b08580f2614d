#pragma once

#include <map>
#include <string>

namespace vantoro::test {

/// A folder for one test, gone with it.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::string& path() const { return m_path; }
    std::string operator/(const std::string& name) const { return m_path + "/" + name; }

private:
    std::string m_path;
};

/// Everything below a folder: "a" -> "dir", "a/b" -> "file:content", "l" -> "link:target".
using Tree = std::map<std::string, std::string>;
Tree treeOf(const std::string& folder);

void writeFile(const std::string& path, const std::string& content);
std::string readFile(const std::string& path);

}
