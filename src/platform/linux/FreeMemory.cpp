#include "FreeMemory.h"

#include <malloc.h>

void returnFreeMemory()
{
    malloc_trim(0);
}

void mergeFreedBlocksImmediately()
{
    mallopt(M_MXFAST, 0); // NOLINT(concurrency-mt-unsafe): there are no other threads yet
}
