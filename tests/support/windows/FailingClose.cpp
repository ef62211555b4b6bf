#include "FailingClose.h"

FailingClose::FailingClose() = default;

FailingClose::~FailingClose() = default;

bool FailingClose::available()
{
    return false;
}
