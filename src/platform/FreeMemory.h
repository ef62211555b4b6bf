#pragma once

/// Gives the system back the memory that the program has freed and its allocator keeps. Does nothing
/// where the allocator does that by itself. Any thread.
void returnFreeMemory();
