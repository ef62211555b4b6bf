#include "FreeMemory.h"

#include <QTest>

#include <malloc.h>

#include <memory>
#include <vector>

/// What the allocator does with freed blocks.
class FreeMemory : public QObject
{
    Q_OBJECT

private slots:
    void smallBlocksAreJoinedAtOnce();
};

void FreeMemory::smallBlocksAreJoinedAtOnce()
{
    // Kept, because freeing its own memory, a large block, would make the allocator join the
    // others.
    std::vector<std::unique_ptr<char[]>> blocks(1'000);
    const auto allocateAndFree = [&blocks] {
        for (auto &block : blocks)
            block = std::make_unique<char[]>(48);
        for (auto &block : blocks)
            block.reset();
    };
    allocateAndFree();
    if (mallinfo2().fsmblks == 0) // free blocks that wait to be joined
        QSKIP("this allocator defers nothing");
    mergeFreedBlocksImmediately();
    malloc_trim(0); // joins them
    allocateAndFree();
    QCOMPARE(mallinfo2().fsmblks, std::size_t(0));
}

QTEST_GUILESS_MAIN(FreeMemory)
#include "tst_free_memory.moc"
