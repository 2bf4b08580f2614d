#include "engine/extract/entry_tree.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace vantoro::test {

TEST(EntryTree, findsByArchiveNameAndByDiskName)
{
    EntryTree tree;
    const auto first = tree.add(kRootNode, "a", NodeKind::File, 0);
    const auto folder = tree.add(kRootNode, "a", NodeKind::Folder, 1);
    tree.setDiskName(folder, "a 1");
    const auto last = tree.add(kRootNode, "a", NodeKind::Link, 2);
    tree.setDiskName(last, "a 2");
    EXPECT_EQ(tree.find(kRootNode, "a"), last);
    EXPECT_EQ(tree.findFolder(kRootNode, "a"), folder);
    EXPECT_EQ(tree.findOnDisk(kRootNode, "a"), first);
    EXPECT_EQ(tree.findOnDisk(kRootNode, "a 1"), folder);
    EXPECT_EQ(tree.find(kRootNode, "a 1"), kNoNode);
    tree.setDiskName(folder, "a 3");
    EXPECT_EQ(tree.findOnDisk(kRootNode, "a 1"), kNoNode);
    EXPECT_EQ(tree.findOnDisk(kRootNode, "a 3"), folder);
    EXPECT_EQ(tree.path(tree.add(folder, "b", NodeKind::File, 3)), "a/b");
}

TEST(EntryTree, staysSmallAndQuickWithAMillionEntries)
{
    const auto resident = [] {
        std::ifstream status("/proc/self/statm");
        std::size_t total = 0, pages = 0;
        status >> total >> pages;
        return pages * 4096;
    };
    [[maybe_unused]] const auto before = resident();
    EntryTree tree;
    NodeId parent = kRootNode;
    for (unsigned i = 0; i < 1'000'000; ++i) {
        if (i % 1000 == 0)
            parent = tree.add(kRootNode, "folder" + std::to_string(i), NodeKind::Folder, i);
        tree.add(parent, "file" + std::to_string(i), NodeKind::File, i);
    }
    EXPECT_NE(tree.findOnDisk(parent, "file999999"), kNoNode);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    EXPECT_LT((resident() - before) / 1'000'000, 128U) << "bytes an entry, name included";
#endif
}

}
