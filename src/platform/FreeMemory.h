#pragma once

/// Makes the allocator release its free memory to the system. Does nothing where the allocator does
/// so itself. Any thread.
void returnFreeMemory();

/// Makes the allocator merge freed blocks immediately, for the whole process. glibc defers small
/// ones to the next large request, which then takes 0.1 s after a large log was closed. Call it
/// before other threads exist.
void mergeFreedBlocksImmediately();
