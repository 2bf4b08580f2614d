#include "engine/formats/rar/rar.h"
#include "tests/support/archive_contents.h"
#include "tests/support/passwords.h"

#include <gtest/gtest.h>

#include <openssl/evp.h>

#include <filesystem>
#include <fstream>
#include <set>

namespace vantoro {

namespace {

using namespace test;
namespace fs = std::filesystem;

struct Expected {
    std::string password;
    std::vector<std::array<std::string, 4>> rows; // kind, size, digest, name
};

Expected readExpected(const fs::path& path)
{
    Expected expected;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        constexpr std::string_view kPassword = "# password: ";
        if (line.starts_with(kPassword))
            expected.password = line.substr(kPassword.size());
        if (line.empty() || line[0] == '#')
            continue;
        std::array<std::string, 4> row;
        std::istringstream fields(line);
        for (auto& field : row)
            std::getline(fields, field, '\t');
        expected.rows.push_back(row);
    }
    return expected;
}

std::string sha256(std::string_view data)
{
    std::array<unsigned char, 32> digest;
    unsigned length = 0;
    EVP_Digest(data.data(), data.size(), digest.data(), &length, EVP_sha256(), nullptr);
    std::string text;
    for (const auto byte : digest) {
        constexpr std::string_view kDigits = "0123456789abcdef";
        text += {kDigits[byte >> 4], kDigits[byte & 15]};
    }
    return text;
}

class FolderOfSamples final : public VolumeProvider {
public:
    explicit FolderOfSamples(fs::path folder) : m_folder(std::move(folder)) {}
    Result<SourcePtr> openVolume(std::string_view name) override
    {
        auto source = openFileSource(m_folder / name);
        return source ? source : Error{ErrorCode::MissingVolume, "test"};
    }

private:
    fs::path m_folder;
};

/// Archives that real packers made, where the folder is at hand.
TEST(RarSamples, haveTheExpectedDigests)
{
    const auto folder = fs::path(VANTORO_SOURCE_DIR) / ".." / "shared" / "samples" / "rar";
    if (!fs::is_directory(folder))
        GTEST_SKIP() << "no folder of samples at " << folder;
    FolderOfSamples volumes(folder);
    for (const auto& item : fs::directory_iterator(folder)) {
        const auto name = item.path().stem().string();
        const auto isCut = name.ends_with(".001"); // pieces without headers are joined before a reader sees them
        if (item.path().extension() != ".expect" || isCut)
            continue;
        const auto expected = readExpected(item.path());
        ScriptedPasswords passwords({expected.password});
        OpenContext context;
        context.name = name;
        context.passwords = &passwords;
        context.volumes = &volumes;
        const auto archive = kRarFormat.open(openFileSource(folder / name).value(), context);
        ASSERT_TRUE(archive) << name;
        const auto contents = readAll(**archive);
        EXPECT_TRUE(contents.result) << name;
        // By digest: names of old archives need a charset.
        std::multiset<std::string> digests;
        for (const auto& entry : contents.items)
            digests.insert(entry.outcome ? sha256(entry.data) : "damaged");
        for (const auto& [kind, size, digest, entryName] : expected.rows)
            EXPECT_TRUE(kind != "f" || digests.contains(digest)) << name << ": " << entryName;
    }
}

}

}
