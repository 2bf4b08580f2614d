#include "browse/NameOrder.h"
#include "files/KXUtilities.h"
#include "tests/browse/browse_fixture.h"

namespace vantoro {

using Node = ArchiveTree::Node;

class ArchiveTreeTest : public QObject {
    Q_OBJECT
private slots:
    void hasTheLayoutOfTheSkeleton();
    void impliedFoldersAreFolders();
    void finderFilesAreNeverShown();
    void ofEqualNamesTheLastIsShown();
    void aFileAndAFolderOfOneNameBothShow();
    void beginsAtTheCommonFolder();
    void foldersComeFirstAndNumbersCount();
    void namesCompareAsPeopleReadThem_data();
    void namesCompareAsPeopleReadThem();
    void rowsLeadToAndFro();
    void collectsItemsBeforeWhatLiesBeneath();
    void indicesAreOfFilesAlone();
    void choicesEndAtTheLooseBound();
    void totalsCountAllThatLiesBeneath();
    void filterKeepsTheWayToMatches();
    void filterIgnoresCaseAndAccents();
    void deepNestingIsNoRecursion();
    void outlivesTheWrapper();

private:
    std::unique_ptr<KXUnarchiveWrapper> open(const ZipBuilder& zip) const
    {
        return zip.write(m_home.path("t.zip")) ? browsed(m_home.path("t.zip")) : nullptr;
    }
    std::shared_ptr<const ArchiveTree> treeOf(const ZipBuilder& zip) const
    {
        return ArchiveTree::generateTree(*open(zip));
    }

    OwnHome m_home;
};

/// The tree by its rule, from the placeholders on disk: every folder, and the files that are entries.
void walk(const KXUnarchiveWrapper& wrapper, const QString& folder, QStringList& paths)
{
    const QStringList names = KXUtilities::contentsOfFolder(folder).value();
    for (const QString& name : names) {
        const QString path = folder + "/" + name;
        if (name == ".DS_Store")
            continue;
        if (KXUtilities::isFolder(path)) {
            paths += path + "/";
            walk(wrapper, path, paths);
        } else if (wrapper.archiveContents()->itemAtPath(path)) {
            paths += path;
        }
    }
}

void ArchiveTreeTest::hasTheLayoutOfTheSkeleton()
{
    const auto wrapper = open(ZipBuilder()
                                  .add("top/", {})
                                  .add("top/b/c/d.txt", "d")
                                  .add("top/.DS_Store", "x")
                                  .add("top/e/.DS_Store", "x")
                                  .add("top/b/../a", "x")
                                  .add("top/a", "a")
                                  .add("top/b/c/", {})
                                  .add("top/a", "again")
                                  .add("top//f/./g", "g")
                                  .add("top/empty/", {}));
    QStringList onDisk;
    walk(*wrapper, wrapper->tmpArchivePath(), onDisk);
    QStringList shown;
    const auto tree = ArchiveTree::generateTree(*wrapper);
    for (Node node = 1; node < tree->nodeCount(); ++node)
        shown += tree->representedObject(node)->itemPath() + (tree->isFolder(node) ? "/" : "");
    onDisk.sort();
    shown.sort();
    QCOMPARE(shown, onDisk);
    QVERIFY(onDisk.size() > 8);
}

void ArchiveTreeTest::impliedFoldersAreFolders()
{
    const auto wrapper = open(ZipBuilder().add("a/b/c.txt", "content"));
    QCOMPARE(wrapper->tmpArchivePath(), temporaryPath("t/a"));
    const auto tree = ArchiveTree::generateTree(*wrapper);
    QCOMPARE(lines(*tree), QStringList({"b/", "  c.txt"}));
    const auto* root = tree->representedObject(ArchiveTree::kRoot);
    QCOMPARE(root->itemPath(), temporaryPath("t/a"));
    const auto* folder = tree->representedObject(1);
    QCOMPARE(folder->itemPath(), temporaryPath("t/a/b"));
    QCOMPARE(folder->itemName(), "b");
    QVERIFY(folder->isFolder() && !wrapper->archiveContents()->contains(folder));
    QVERIFY(wrapper->archiveContents()->contains(tree->representedObject(2)));
}

void ArchiveTreeTest::finderFilesAreNeverShown()
{
    const auto wrapper = open(ZipBuilder().add(".DS_Store", "x"));
    QVERIFY(!ArchiveTree::generateTree(*wrapper)->hasChildren() && wrapper->archiveContents()->count() == 1);
    QCOMPARE(lines(*treeOf(
                 ZipBuilder().add("a/.DS_Store", "x").add("b/.DS_Store/c", "x").add(".DS_Store/", {}).add("d", "d"))),
             QStringList({"a/", "b/", "d"}));
}

void ArchiveTreeTest::ofEqualNamesTheLastIsShown()
{
    const auto wrapper = open(ZipBuilder().add("a", "1").add("d/", {}).add("a", "2").add("d/", {}));
    const auto tree = ArchiveTree::generateTree(*wrapper);
    QCOMPARE(lines(*tree), QStringList({"d/", "a"}));
    QCOMPARE(tree->representedObject(1), wrapper->archiveContents()->itemAt(3));
    QCOMPARE(tree->representedObject(2), wrapper->archiveContents()->itemAt(2));
}

void ArchiveTreeTest::aFileAndAFolderOfOneNameBothShow()
{
    QCOMPARE(lines(*treeOf(ZipBuilder().add("a", "file").add("a/b", "b"))), QStringList({"a/", "  b", "a"}));
}

void ArchiveTreeTest::beginsAtTheCommonFolder()
{
    const auto wrapper = open(ZipBuilder().add("docs/a", "a").add("docs/", {}).add("docs/b/c", "c"));
    const auto tree = ArchiveTree::generateTree(*wrapper);
    QCOMPARE(lines(*tree), QStringList({"b/", "  c", "a"}));
    QCOMPARE(tree->representedObject(ArchiveTree::kRoot), wrapper->archiveContents()->itemAt(1));
    QCOMPARE(treeOf(ZipBuilder().add("a", "a"))->representedObject(ArchiveTree::kRoot)->fileName(), "t");
}

void ArchiveTreeTest::foldersComeFirstAndNumbersCount()
{
    QCOMPARE(lines(*treeOf(ZipBuilder()
                               .add("b10", "")
                               .add("Z/x", "")
                               .add("b9", "")
                               .add("\xC3\xA9t\xC3\xA9", "")
                               .add("eta", "")
                               .add("z/y", "")
                               .add("f", ""))),
             QStringList({"Z/", "  x", "z/", "  y", "b9", "b10", "eta", "été", "f"}));
}

void ArchiveTreeTest::namesCompareAsPeopleReadThem_data()
{
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("second");
    QTest::newRow("numbers") << QByteArray("page 2.png") << QByteArray("page 10.png");
    QTest::newRow("long numbers") << QByteArray("99999999999999999998") << QByteArray("99999999999999999999");
    QTest::newRow("zeros decide last") << QByteArray("a01b") << QByteArray("a1b");
    QTest::newRow("zeros do not decide early") << QByteArray("a1") << QByteArray("a02");
    QTest::newRow("case") << QByteArray("Alpha") << QByteArray("beta");
    QTest::newRow("case decides last") << QByteArray("A") << QByteArray("a");
    QTest::newRow("shorter first") << QByteArray("a") << QByteArray("a.txt");
    QTest::newRow("digits before letters") << QByteArray("1") << QByteArray("a");
    QTest::newRow("none") << QByteArray("") << QByteArray("0");
}

void ArchiveTreeTest::namesCompareAsPeopleReadThem()
{
    QFETCH(QByteArray, first);
    QFETCH(QByteArray, second);
    QVERIFY(compareNaturally(first.toStdString(), second.toStdString()) < 0);
    QVERIFY(compareNaturally(second.toStdString(), first.toStdString()) > 0);
    QCOMPARE(compareNaturally(first.toStdString(), first.toStdString()), 0);
}

void ArchiveTreeTest::rowsLeadToAndFro()
{
    const auto tree = treeOf(ZipBuilder().add("a/1", "").add("a/2/x", "").add("b", "").add("c/y", ""));
    QCOMPARE(tree->childCount(ArchiveTree::kRoot), 3);
    int seen = 1;
    for (Node node = 0; node < tree->nodeCount(); ++node) {
        for (int row = 0; row < tree->childCount(node); ++row, ++seen) {
            const Node child = tree->child(node, row);
            QCOMPARE(tree->parent(child), node);
            QCOMPARE(tree->row(child), row);
            QCOMPARE(tree->nodeForItem(tree->representedObject(child)), child);
        }
        QCOMPARE(tree->child(node, tree->childCount(node)), ArchiveTree::kNoNode);
        QCOMPARE(tree->child(node, -1), ArchiveTree::kNoNode);
    }
    QCOMPARE(seen, static_cast<int>(tree->nodeCount()));
    QCOMPARE(tree->parent(ArchiveTree::kRoot), ArchiveTree::kNoNode);
}

void ArchiveTreeTest::collectsItemsBeforeWhatLiesBeneath()
{
    const auto tree = treeOf(ZipBuilder().add("a/2/x", "").add("a/1", "").add("b", ""));
    QStringList names;
    for (const auto* item : tree->getItemForTreeNode(tree->child(ArchiveTree::kRoot, 0)))
        names += item->fileName();
    QCOMPARE(names, QStringList({"a", "2", "x", "1"}));
    QCOMPARE(tree->getItemForTreeNode(tree->nodeCount() - 1).size(), std::size_t{1});
}

void ArchiveTreeTest::indicesAreOfFilesAlone()
{
    const auto tree
        = treeOf(ZipBuilder().add("a/", {}).add("a/y", "").add("b", "").add("a/x", "").add("e/f/", {}).add("a/y", ""));
    const std::vector<quint64> expected{3, 1}; // in the tree's order; a name's first entry
    QCOMPARE(tree->entryIndices(tree->child(ArchiveTree::kRoot, 0)), expected);
    QCOMPARE(lines(*tree).at(3), "e/");
    QVERIFY(tree->entryIndices(tree->child(ArchiveTree::kRoot, 1)).empty()); // only empty folders
}

void ArchiveTreeTest::choicesEndAtTheLooseBound()
{
    QVERIFY(!rowIsChosenEntry(-1, 5) && !rowIsChosenEntry(0, 5)); // nothing, and the root
    QVERIFY(rowIsChosenEntry(1, 5) && rowIsChosenEntry(6, 5) && !rowIsChosenEntry(7, 5));
    QVERIFY(rowIsChosenEntry(1, 0));
}

void ArchiveTreeTest::totalsCountAllThatLiesBeneath()
{
    const auto tree = treeOf(ZipBuilder().add("a/b/c", "12345").add("a/d", "678").add("e", "9"));
    const auto all = tree->totals(ArchiveTree::kRoot);
    QCOMPARE(all.folders, 2);
    QCOMPARE(all.files, 3);
    QCOMPARE(all.bytes, 9);
    const auto folder = tree->totals(tree->child(ArchiveTree::kRoot, 0));
    QCOMPARE(folder.files, 2);
    QCOMPARE(folder.bytes, 8);
    QCOMPARE(tree->totals(tree->nodeCount() - 1).files, 0); // a file holds nothing
}

void ArchiveTreeTest::filterKeepsTheWayToMatches()
{
    const auto tree = treeOf(ZipBuilder()
                                 .add("a/match/in.txt", "")
                                 .add("a/other/out.txt", "")
                                 .add("b/a match.txt", "")
                                 .add("b/none", "")
                                 .add("c/d", ""));
    const auto some = tree->filtered("match");
    QCOMPARE(lines(*some), QStringList({"a/", "  match/", "    in.txt", "b/", "  a match.txt"}));
    QCOMPARE(some->representedObject(3), tree->representedObject(3)); // the same items
    QCOMPARE(some->totals(ArchiveTree::kRoot).files, 2);
    QCOMPARE(lines(*tree->filtered({})), lines(*tree));
    QVERIFY(!tree->filtered("nowhere")->hasChildren());
    QCOMPARE(lines(*some->filtered("in")), QStringList({"a/", "  match/", "    in.txt"}));
}

void ArchiveTreeTest::filterIgnoresCaseAndAccents()
{
    const auto tree = treeOf(ZipBuilder().add("R\xC3\xA9sum\xC3\xA9.PDF", "").add("r\xC3\xA4um", "").add("x", ""));
    QCOMPARE(lines(*tree->filtered("resume.pdf")), QStringList("Résumé.PDF"));
    QCOMPARE(lines(*tree->filtered("RÄUM")), QStringList("räum"));
}

void ArchiveTreeTest::deepNestingIsNoRecursion()
{
    ZipBuilder zip;
    QByteArray path;
    for (int i = 0; i < 500; ++i)
        zip.add((path += "d/") + "file" + QByteArray::number(i), "");
    const auto tree = treeOf(zip);
    QCOMPARE(tree->nodeCount(), Node{1 + 499 + 500});
    QCOMPARE(tree->totals(ArchiveTree::kRoot).files, 500);
}

void ArchiveTreeTest::outlivesTheWrapper()
{
    auto wrapper = open(ZipBuilder().add("a/b", "b").add("c", "c"));
    auto tree = ArchiveTree::generateTree(*wrapper);
    wrapper.reset();
    const auto filtered = tree->filtered("b");
    tree.reset();
    QCOMPARE(lines(*filtered), QStringList({"a/", "  b"}));
}

}

QTEST_GUILESS_MAIN(vantoro::ArchiveTreeTest)
#include "archive_tree_test.moc"
