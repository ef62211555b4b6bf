#include "ComSecurity.h"

qint32 setUpComSecurity()
{
    return 0;
}
