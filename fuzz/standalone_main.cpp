// Runs files, and all files of folders, through a fuzz target: for builds without libFuzzer.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

unsigned runFile(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    return 1;
}

unsigned runAll(const std::filesystem::path& path)
{
    if (!std::filesystem::is_directory(path))
        return runFile(path);
    unsigned count = 0;
    for (const auto& item : std::filesystem::recursive_directory_iterator(path))
        count += item.is_regular_file() ? runFile(item.path()) : 0;
    return count;
}

}

int main(int argc, char** argv)
{
    unsigned count = 0;
    for (int i = 1; i < argc; ++i)
        count += runAll(argv[i]);
    if (const char* folder = std::getenv("VANTORO_FUZZ_INPUTS"))
        count += runAll(folder);
    std::printf("%u inputs\n", count);
    return count > 0 ? 0 : 1;
}
