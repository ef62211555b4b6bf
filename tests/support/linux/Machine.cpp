#include "Machine.h"

bool onWindows()
{
    return false;
}

bool underWine()
{
    return false;
}

void hide(const QString &) {}
