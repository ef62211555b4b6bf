#include "FreeMemory.h"

void returnFreeMemory() {} // the heap gives large free blocks back by itself

void joinFreedBlocksAtOnce() {} // the heap does that by itself
