#include "FakeWmi.h"

#include "CallTrace.h"
#include "FakeWmiObjects.h"

namespace {

QString textOf(const wchar_t *characters)
{
    return characters != nullptr ? QString::fromWCharArray(characters) : "none";
}

BSTR comText(const QString &text)
{
    return SysAllocString(text.toStdWString().c_str());
}

class Module final : public StubObject
{
public:
    Module(FakeWmi &fakeWmi, FakeWmi::Module values)
        : StubObject(fakeWmi)
        , module(std::move(values))
    {
    }

    HRESULT STDMETHODCALLTYPE Get(LPCWSTR name, LONG, VARIANT *value, CIMTYPE *, LONG *) override
    {
        traceCall("IWbemClassObject::Get");
        const QString property = textOf(name);
        if (property == "PartNumber")
            return tell(module.partNumber, value);
        if (property == "Capacity") {
            const HRESULT result = tell(module.capacity, value);
            wmi.capacities.append(V_I4(value));
            return result;
        }
        if (property != "Speed")
            return unexpected(qPrintable(property));
        if (!module.speed)
            return static_cast<HRESULT>(WBEM_E_NOT_FOUND);
        V_VT(value) = VT_I4;
        V_I4(value) = *module.speed;
        return S_OK;
    }

private:
    static HRESULT tell(const std::optional<QString> &text, VARIANT *value)
    {
        if (!text)
            return static_cast<HRESULT>(WBEM_E_NOT_FOUND);
        V_VT(value) = VT_BSTR;
        V_BSTR(value) = comText(*text);
        return S_OK;
    }

    const FakeWmi::Module module;
};

class Enumeration final : public StubEnumeration
{
public:
    using StubEnumeration::StubEnumeration;

    HRESULT STDMETHODCALLTYPE Next(LONG timeout, ULONG count, IWbemClassObject **objects,
                                   ULONG *returned) override
    {
        traceCall("IEnumWbemClassObject::Next");
        wmi.calls.append(QString("Next %1 %2").arg(timeout).arg(count));
        *returned = 0;
        if (at == wmi.modules.size())
            return wmi.end;
        *objects = new Module(wmi, wmi.modules.at(at++));
        *returned = 1;
        return S_OK;
    }

private:
    int at = 0;
};

class Security final : public Counted<IClientSecurity>
{
public:
    using Counted::Counted;

    HRESULT STDMETHODCALLTYPE SetBlanket(IUnknown *, DWORD authentication, DWORD authorization,
                                         OLECHAR *principal, DWORD level, DWORD impersonation,
                                         void *identity, DWORD capabilities) override
    {
        wmi.calls.append(QString("SetBlanket %1 %2 %3 %4 %5 %6 %7")
                             .arg(authentication)
                             .arg(authorization)
                             .arg(textOf(principal))
                             .arg(level)
                             .arg(impersonation)
                             .arg(identity == nullptr ? "none" : QString())
                             .arg(capabilities));
        return wmi.blanket;
    }
    HRESULT STDMETHODCALLTYPE QueryBlanket(IUnknown *, DWORD *, DWORD *, OLECHAR **, DWORD *,
                                           DWORD *, void **, DWORD *) override
    {
        return unexpected("IClientSecurity::QueryBlanket");
    }
    HRESULT STDMETHODCALLTYPE CopyProxy(IUnknown *, IUnknown **) override
    {
        return unexpected("IClientSecurity::CopyProxy");
    }
};

class Services final : public StubServices
{
public:
    using StubServices::StubServices;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void **object) override
    {
        if (id != __uuidof(IClientSecurity)) // a real proxy has it
            return StubServices::QueryInterface(id, object);
        *object = static_cast<IClientSecurity *>(new Security(wmi));
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ExecQuery(const BSTR language, const BSTR text, LONG flags,
                                        IWbemContext *, IEnumWbemClassObject **found) override
    {
        traceCall("IWbemServices::ExecQuery");
        wmi.calls.append(QString("ExecQuery %1 \"%2\" %3")
                             .arg(textOf(language), textOf(text), QString::number(flags)));
        if (SUCCEEDED(wmi.query))
            *found = new Enumeration(wmi);
        return wmi.query;
    }
};

class Locator final : public Counted<IWbemLocator>
{
public:
    using Counted::Counted;

    HRESULT STDMETHODCALLTYPE ConnectServer(const BSTR resource, const BSTR user,
                                            const BSTR password, const BSTR locale, LONG flags,
                                            const BSTR authority, IWbemContext *,
                                            IWbemServices **services) override
    {
        traceCall("IWbemLocator::ConnectServer");
        wmi.calls.append(QString("ConnectServer %1 %2 %3 %4 %5 %6")
                             .arg(textOf(resource), textOf(user), textOf(password), textOf(locale),
                                  QString::number(flags), textOf(authority)));
        if (SUCCEEDED(wmi.connection))
            *services = new Services(wmi);
        return wmi.connection;
    }
};

class Factory final : public Counted<IClassFactory>
{
public:
    using Counted::Counted;

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown *, REFIID id, void **object) override
    {
        *object = nullptr;
        wmi.calls.append("CreateInstance");
        if (FAILED(wmi.creation))
            return wmi.creation;
        auto *locator = new Locator(wmi);
        const HRESULT result = locator->QueryInterface(id, object);
        locator->Release();
        return result;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override
    {
        return unexpected("IClassFactory::LockServer");
    }
};

} // namespace

FakeWmi::FakeWmi()
    : end(WBEM_S_FALSE)
{
    auto *factory = new Factory(*this);
    if (FAILED(CoRegisterClassObject(CLSID_WbemLocator, factory, CLSCTX_INPROC_SERVER,
                                     REGCLS_MULTIPLEUSE, &registration)))
        qFatal("the locator's class cannot be registered");
    factory->Release(); // COM holds a reference
}

FakeWmi::~FakeWmi()
{
    CoRevokeClassObject(registration);
}
