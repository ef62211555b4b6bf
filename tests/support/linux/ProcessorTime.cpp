#include "ProcessorTime.h"

#include <ctime>

double processorSeconds()
{
    return double(std::clock()) / CLOCKS_PER_SEC;
}
