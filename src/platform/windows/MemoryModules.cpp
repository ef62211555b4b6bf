#include "MemoryModules.h"

#include "Com.h"
#include "PlatformLog.h"

#include <wbemidl.h>

namespace {

/// @p text in the system's ANSI code page; empty for none.
QByteArray ansi(const wchar_t *text)
{
    if (text == nullptr)
        return {};
    const int size = WideCharToMultiByte(CP_ACP, 0, text, -1, nullptr, 0, nullptr, nullptr);
    if (size <= 1)
        return {};
    QByteArray bytes(size, '\0');
    WideCharToMultiByte(CP_ACP, 0, text, -1, bytes.data(), size, nullptr, nullptr);
    bytes.chop(1); // the terminating zero
    return bytes;
}

/// Leaves @p value empty if the module lacks the property.
void get(const ComPointer<IWbemClassObject> &module, const wchar_t *property, ComValue &value)
{
    module->Get(property, 0, value.out(), nullptr, nullptr);
}

MemoryModule moduleOf(const ComPointer<IWbemClassObject> &object)
{
    MemoryModule module;
    {
        ComValue partNumber;
        get(object, L"PartNumber", partNumber);
        if (V_VT(&partNumber.get()) == VT_BSTR)
            module.partNumber = ansi(V_BSTR(&partNumber.get()));
    }
    {
        // The property is text but is read as a number, on purpose: support tools know this figure.
        ComValue capacity;
        get(object, L"Capacity", capacity);
        module.capacity = V_I4(&capacity.get());
    }
    {
        ComValue speed;
        get(object, L"Speed", speed);
        module.speed = V_I4(&speed.get());
    }
    return module;
}

MemoryModuleList modulesFrom(const ComPointer<IEnumWbemClassObject> &found)
{
    using Query = MemoryModuleList::Query;

    QVector<MemoryModule> modules;
    for (;;) {
        ComPointer<IWbemClassObject> object;
        ULONG count = 0;
        const HRESULT result =
            found->Next(static_cast<LONG>(WBEM_INFINITE), 1, object.out(), &count);
        if (FAILED(result)) {
            qCWarning(platformLog) << "memory modules end early:" << Qt::showbase << Qt::hex
                                   << static_cast<quint32>(result);
            return {Query::Enumeration, modules};
        }
        if (count == 0 || object.get() == nullptr)
            return {Query::Complete, modules};
        modules.append(moduleOf(object));
    }
}

bool letImpersonate(IWbemServices *services)
{
    return SUCCEEDED(CoSetProxyBlanket(services, RPC_C_AUTHN_WINNT, RPC_C_AUTHZ_NONE, nullptr,
                                       RPC_C_AUTHN_LEVEL_CALL, RPC_C_IMP_LEVEL_IMPERSONATE, nullptr,
                                       EOAC_NONE));
}

} // namespace

MemoryModuleList memoryModules()
{
    using Query = MemoryModuleList::Query;

    const ComApartment apartment; // first, so that it is destroyed last
    if (!apartment.joined())
        return {Query::Library, {}};

    ComPointer<IWbemLocator> locator;
    if (FAILED(CoCreateInstance(CLSID_WbemLocator, nullptr, CLSCTX_INPROC_SERVER, IID_IWbemLocator,
                                locator.outAsVoid())))
        return {Query::Locator, {}};

    ComPointer<IWbemServices> services;
    const ComText nameSpace(L"ROOT\\CIMV2");
    if (FAILED(locator->ConnectServer(nameSpace.get(), nullptr, nullptr, nullptr, 0, nullptr,
                                      nullptr, services.out())))
        return {Query::Connection, {}};

    if (!letImpersonate(services.get()))
        return {Query::Proxy, {}};

    ComPointer<IEnumWbemClassObject> found;
    const ComText language(L"WQL");
    const ComText query(L"SELECT * FROM Win32_PhysicalMemory");
    if (FAILED(services->ExecQuery(language.get(), query.get(),
                                   WBEM_FLAG_FORWARD_ONLY | WBEM_FLAG_RETURN_IMMEDIATELY, nullptr,
                                   found.out())))
        return {Query::Execution, {}};

    return modulesFrom(found);
}
