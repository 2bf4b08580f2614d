#include "engine/write/source_batch.h"
#include "tests/engine/extract/temp_folder.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace vantoro;
using test::TempFolder;
using test::writeFile;

namespace {

std::string textOf(const SourceBatch::Row& row)
{
    return {reinterpret_cast<const char*>(row.data.data()), row.data.size()};
}

class SourceBatchTest : public ::testing::Test {
protected:
    /// Lists the folder, then lets `change` happen before the batch is read.
    template <class F> const std::vector<SourceBatch::Row>& read(F&& change)
    {
        m_list = collectSources({{m_folder.path(), "", true}}, {}, m_folder / "target").value();
        m_batch.clear();
        for (const auto& item : m_list.items)
            m_batch.add(item);
        change();
        m_batch.read({});
        return m_batch.rows();
    }
    const SourceBatch::Row& row(const std::string& name) const
    {
        for (const auto& each : m_batch.rows()) {
            if (each.item->name.ends_with("/" + name))
                return each;
        }
        throw std::out_of_range(name);
    }

    TempFolder m_folder;
    SourceList m_list;
    SourceBatch m_batch;
};

TEST_F(SourceBatchTest, readsSmallFilesAndLeavesTheRest)
{
    const std::string large(200 << 10, 'x');
    writeFile(m_folder / "a", "first");
    writeFile(m_folder / "b", "");
    std::filesystem::create_directory(m_folder / "c");
    writeFile(m_folder / "c/d", std::string(100'000, 'd'));
    writeFile(m_folder / "large", large);
    std::filesystem::create_symlink("a", m_folder / "link");
    ASSERT_EQ(read([] {}).size(), 7U);
    EXPECT_TRUE(row("a").isRead);
    EXPECT_EQ(textOf(row("a")), "first");
    EXPECT_TRUE(row("b").isRead);
    EXPECT_EQ(row("b").size, 0U);
    EXPECT_EQ(textOf(row("c/d")), std::string(100'000, 'd'));
    for (const auto* name : {"c", "large", "link"})
        EXPECT_FALSE(row(name).isRead || row(name).error) << name;
}

TEST_F(SourceBatchTest, takesFilesAsTheyAreWhenRead)
{
    for (const auto* name : {"before", "gone", "grown", "shorter", "turned", "untouched"})
        writeFile(m_folder / name, std::string(1000, name[0]));
    read([&] {
        std::filesystem::remove(m_folder / "gone");
        writeFile(m_folder / "grown", std::string(5000, 'G'));
        writeFile(m_folder / "shorter", "S");
        std::filesystem::remove(m_folder / "turned");
        std::filesystem::create_symlink("before", m_folder / "turned");
    });
    EXPECT_TRUE(row("gone").error);
    EXPECT_TRUE(row("turned").error) << "a link is not followed";
    EXPECT_FALSE(row("grown").isRead) << "there is no room for it";
    EXPECT_EQ(row("shorter").size, 1U);
    EXPECT_EQ(textOf(row("shorter")), "S");
    EXPECT_EQ(textOf(row("before")), std::string(1000, 'b'));
    EXPECT_EQ(textOf(row("untouched")), std::string(1000, 'u'));
}

TEST_F(SourceBatchTest, stopsWhenAskedTo)
{
    writeFile(m_folder / "a", "first");
    m_list = collectSources({{m_folder.path(), "", true}}, {}, m_folder / "target").value();
    for (const auto& item : m_list.items)
        m_batch.add(item);
    const CancelToken cancel;
    cancel.cancel();
    m_batch.read(cancel);
    EXPECT_FALSE(row("a").isRead);
}

}
