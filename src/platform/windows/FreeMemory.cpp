#include "FreeMemory.h"

void returnFreeMemory() {} // the heap returns large free blocks by itself

void mergeFreedBlocksImmediately() {} // the heap does so by itself
