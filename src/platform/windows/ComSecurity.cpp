#include "ComSecurity.h"

#include <objbase.h>

qint32 setUpComSecurity()
{
    static const HRESULT result =
        CoInitializeSecurity(nullptr, -1, nullptr, nullptr, RPC_C_AUTHN_LEVEL_DEFAULT,
                             RPC_C_IMP_LEVEL_IMPERSONATE, nullptr, EOAC_NONE, nullptr);
    return result;
}
