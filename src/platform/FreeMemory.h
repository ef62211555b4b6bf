#pragma once

/// Returns freed memory that the allocator keeps to the system. Does nothing where the allocator
/// does so itself. Any thread.
void returnFreeMemory();

/// Lets the allocator join freed blocks with their neighbours at once, for the whole process. glibc
/// would put the small ones off to the next large request, which then takes 0.1 s after a large log.
/// Call it before there are threads.
void joinFreedBlocksAtOnce();
