#include "tests/engine/extract/temp_folder.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace vantoro::test {

namespace fs = std::filesystem;

TempFolder::TempFolder()
{
    std::string pattern = (fs::temp_directory_path() / "extractXXXXXX").string();
    m_path = ::mkdtemp(pattern.data());
}

TempFolder::~TempFolder()
{
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

Tree treeOf(const std::string& folder)
{
    Tree tree;
    for (const auto& item : fs::recursive_directory_iterator(folder)) {
        auto& what = tree[fs::relative(item.path().parent_path(), folder) == "."
                              ? item.path().filename().string()
                              : (fs::relative(item.path().parent_path(), folder) / item.path().filename()).string()];
        const auto status = item.symlink_status();
        if (fs::is_symlink(status))
            what = "link:" + fs::read_symlink(item.path()).string();
        else if (fs::is_directory(status))
            what = "dir";
        else if (fs::is_regular_file(status))
            what = "file:" + readFile(item.path().string());
        else
            what = "other";
    }
    return tree;
}

void writeFile(const std::string& path, const std::string& content)
{
    std::ofstream(path, std::ios::binary) << content;
}

std::string readFile(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

}
