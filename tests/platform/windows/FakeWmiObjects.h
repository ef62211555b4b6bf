#pragma once

#include "FakeWmi.h"

#include <objbase.h>
#include <wbemcli.h>

// The COM side of FakeWmi: the common base of its objects, and the methods that must not be called.

/// A COM object with reference counting, which also counts the living objects in @p FakeWmi.
template <typename Interface>
class Counted : public Interface
{
public:
    explicit Counted(FakeWmi &fakeWmi)
        : wmi(fakeWmi)
    {
        ++wmi.living;
    }
    Counted(const Counted &) = delete;
    Counted &operator=(const Counted &) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void **object) override
    {
        *object = nullptr;
        if (id != __uuidof(Interface) && id != __uuidof(IUnknown))
            return E_NOINTERFACE;
        this->AddRef();
        *object = this;
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG left = --references;
        if (left == 0)
            delete this;
        return left;
    }

protected:
    virtual ~Counted() { --wmi.living; }
    HRESULT unexpected(const char *method)
    {
        wmi.unexpected.append(method);
        return E_NOTIMPL;
    }

    FakeWmi &wmi;

private:
    ULONG references = 1; ///< the creator's
};

/// Services whose methods all fail.
class StubServices : public Counted<IWbemServices>
{
public:
    using Counted<IWbemServices>::Counted;

    HRESULT STDMETHODCALLTYPE OpenNamespace(const BSTR, LONG, IWbemContext *, IWbemServices **,
                                            IWbemCallResult **) override
    {
        return unexpected("IWbemServices::OpenNamespace");
    }
    HRESULT STDMETHODCALLTYPE CancelAsyncCall(IWbemObjectSink *) override
    {
        return unexpected("IWbemServices::CancelAsyncCall");
    }
    HRESULT STDMETHODCALLTYPE QueryObjectSink(LONG, IWbemObjectSink **) override
    {
        return unexpected("IWbemServices::QueryObjectSink");
    }
    HRESULT STDMETHODCALLTYPE GetObject(const BSTR, LONG, IWbemContext *, IWbemClassObject **,
                                        IWbemCallResult **) override
    {
        return unexpected("IWbemServices::GetObject");
    }
    HRESULT STDMETHODCALLTYPE GetObjectAsync(const BSTR, LONG, IWbemContext *,
                                             IWbemObjectSink *) override
    {
        return unexpected("IWbemServices::GetObjectAsync");
    }
    HRESULT STDMETHODCALLTYPE PutClass(IWbemClassObject *, LONG, IWbemContext *,
                                       IWbemCallResult **) override
    {
        return unexpected("IWbemServices::PutClass");
    }
    HRESULT STDMETHODCALLTYPE PutClassAsync(IWbemClassObject *, LONG, IWbemContext *,
                                            IWbemObjectSink *) override
    {
        return unexpected("IWbemServices::PutClassAsync");
    }
    HRESULT STDMETHODCALLTYPE DeleteClass(const BSTR, LONG, IWbemContext *,
                                          IWbemCallResult **) override
    {
        return unexpected("IWbemServices::DeleteClass");
    }
    HRESULT STDMETHODCALLTYPE DeleteClassAsync(const BSTR, LONG, IWbemContext *,
                                               IWbemObjectSink *) override
    {
        return unexpected("IWbemServices::DeleteClassAsync");
    }
    HRESULT STDMETHODCALLTYPE CreateClassEnum(const BSTR, LONG, IWbemContext *,
                                              IEnumWbemClassObject **) override
    {
        return unexpected("IWbemServices::CreateClassEnum");
    }
    HRESULT STDMETHODCALLTYPE CreateClassEnumAsync(const BSTR, LONG, IWbemContext *,
                                                   IWbemObjectSink *) override
    {
        return unexpected("IWbemServices::CreateClassEnumAsync");
    }
    HRESULT STDMETHODCALLTYPE PutInstance(IWbemClassObject *, LONG, IWbemContext *,
                                          IWbemCallResult **) override
    {
        return unexpected("IWbemServices::PutInstance");
    }
    HRESULT STDMETHODCALLTYPE PutInstanceAsync(IWbemClassObject *, LONG, IWbemContext *,
                                               IWbemObjectSink *) override
    {
        return unexpected("IWbemServices::PutInstanceAsync");
    }
    HRESULT STDMETHODCALLTYPE DeleteInstance(const BSTR, LONG, IWbemContext *,
                                             IWbemCallResult **) override
    {
        return unexpected("IWbemServices::DeleteInstance");
    }
    HRESULT STDMETHODCALLTYPE DeleteInstanceAsync(const BSTR, LONG, IWbemContext *,
                                                  IWbemObjectSink *) override
    {
        return unexpected("IWbemServices::DeleteInstanceAsync");
    }
    HRESULT STDMETHODCALLTYPE CreateInstanceEnum(const BSTR, LONG, IWbemContext *,
                                                 IEnumWbemClassObject **) override
    {
        return unexpected("IWbemServices::CreateInstanceEnum");
    }
    HRESULT STDMETHODCALLTYPE CreateInstanceEnumAsync(const BSTR, LONG, IWbemContext *,
                                                      IWbemObjectSink *) override
    {
        return unexpected("IWbemServices::CreateInstanceEnumAsync");
    }
    HRESULT STDMETHODCALLTYPE ExecQueryAsync(const BSTR, const BSTR, LONG, IWbemContext *,
                                             IWbemObjectSink *) override
    {
        return unexpected("IWbemServices::ExecQueryAsync");
    }
    HRESULT STDMETHODCALLTYPE ExecNotificationQuery(const BSTR, const BSTR, LONG, IWbemContext *,
                                                    IEnumWbemClassObject **) override
    {
        return unexpected("IWbemServices::ExecNotificationQuery");
    }
    HRESULT STDMETHODCALLTYPE ExecNotificationQueryAsync(const BSTR, const BSTR, LONG,
                                                         IWbemContext *, IWbemObjectSink *) override
    {
        return unexpected("IWbemServices::ExecNotificationQueryAsync");
    }
    HRESULT STDMETHODCALLTYPE ExecMethod(const BSTR, const BSTR, LONG, IWbemContext *,
                                         IWbemClassObject *, IWbemClassObject **,
                                         IWbemCallResult **) override
    {
        return unexpected("IWbemServices::ExecMethod");
    }
    HRESULT STDMETHODCALLTYPE ExecMethodAsync(const BSTR, const BSTR, LONG, IWbemContext *,
                                              IWbemClassObject *, IWbemObjectSink *) override
    {
        return unexpected("IWbemServices::ExecMethodAsync");
    }
};

/// An enumeration whose methods all fail.
class StubEnumeration : public Counted<IEnumWbemClassObject>
{
public:
    using Counted<IEnumWbemClassObject>::Counted;

    HRESULT STDMETHODCALLTYPE Reset() override { return unexpected("IEnumWbemClassObject::Reset"); }
    HRESULT STDMETHODCALLTYPE NextAsync(ULONG, IWbemObjectSink *) override
    {
        return unexpected("IEnumWbemClassObject::NextAsync");
    }
    HRESULT STDMETHODCALLTYPE Clone(IEnumWbemClassObject **) override
    {
        return unexpected("IEnumWbemClassObject::Clone");
    }
    HRESULT STDMETHODCALLTYPE Skip(LONG, ULONG) override
    {
        return unexpected("IEnumWbemClassObject::Skip");
    }
};

/// An object whose methods all fail.
class StubObject : public Counted<IWbemClassObject>
{
public:
    using Counted<IWbemClassObject>::Counted;

    HRESULT STDMETHODCALLTYPE GetQualifierSet(IWbemQualifierSet **) override
    {
        return unexpected("IWbemClassObject::GetQualifierSet");
    }
    HRESULT STDMETHODCALLTYPE Put(LPCWSTR, LONG, VARIANT *, CIMTYPE) override
    {
        return unexpected("IWbemClassObject::Put");
    }
    HRESULT STDMETHODCALLTYPE Delete(LPCWSTR) override
    {
        return unexpected("IWbemClassObject::Delete");
    }
    HRESULT STDMETHODCALLTYPE GetNames(LPCWSTR, LONG, VARIANT *, SAFEARRAY **) override
    {
        return unexpected("IWbemClassObject::GetNames");
    }
    HRESULT STDMETHODCALLTYPE BeginEnumeration(LONG) override
    {
        return unexpected("IWbemClassObject::BeginEnumeration");
    }
    HRESULT STDMETHODCALLTYPE Next(LONG, BSTR *, VARIANT *, CIMTYPE *, LONG *) override
    {
        return unexpected("IWbemClassObject::Next");
    }
    HRESULT STDMETHODCALLTYPE EndEnumeration() override
    {
        return unexpected("IWbemClassObject::EndEnumeration");
    }
    HRESULT STDMETHODCALLTYPE GetPropertyQualifierSet(LPCWSTR, IWbemQualifierSet **) override
    {
        return unexpected("IWbemClassObject::GetPropertyQualifierSet");
    }
    HRESULT STDMETHODCALLTYPE Clone(IWbemClassObject **) override
    {
        return unexpected("IWbemClassObject::Clone");
    }
    HRESULT STDMETHODCALLTYPE GetObjectText(LONG, BSTR *) override
    {
        return unexpected("IWbemClassObject::GetObjectText");
    }
    HRESULT STDMETHODCALLTYPE SpawnDerivedClass(LONG, IWbemClassObject **) override
    {
        return unexpected("IWbemClassObject::SpawnDerivedClass");
    }
    HRESULT STDMETHODCALLTYPE SpawnInstance(LONG, IWbemClassObject **) override
    {
        return unexpected("IWbemClassObject::SpawnInstance");
    }
    HRESULT STDMETHODCALLTYPE CompareTo(LONG, IWbemClassObject *) override
    {
        return unexpected("IWbemClassObject::CompareTo");
    }
    HRESULT STDMETHODCALLTYPE GetPropertyOrigin(LPCWSTR, BSTR *) override
    {
        return unexpected("IWbemClassObject::GetPropertyOrigin");
    }
    HRESULT STDMETHODCALLTYPE InheritsFrom(LPCWSTR) override
    {
        return unexpected("IWbemClassObject::InheritsFrom");
    }
    HRESULT STDMETHODCALLTYPE GetMethod(LPCWSTR, LONG, IWbemClassObject **,
                                        IWbemClassObject **) override
    {
        return unexpected("IWbemClassObject::GetMethod");
    }
    HRESULT STDMETHODCALLTYPE PutMethod(LPCWSTR, LONG, IWbemClassObject *,
                                        IWbemClassObject *) override
    {
        return unexpected("IWbemClassObject::PutMethod");
    }
    HRESULT STDMETHODCALLTYPE DeleteMethod(LPCWSTR) override
    {
        return unexpected("IWbemClassObject::DeleteMethod");
    }
    HRESULT STDMETHODCALLTYPE BeginMethodEnumeration(LONG) override
    {
        return unexpected("IWbemClassObject::BeginMethodEnumeration");
    }
    HRESULT STDMETHODCALLTYPE NextMethod(LONG, BSTR *, IWbemClassObject **,
                                         IWbemClassObject **) override
    {
        return unexpected("IWbemClassObject::NextMethod");
    }
    HRESULT STDMETHODCALLTYPE EndMethodEnumeration() override
    {
        return unexpected("IWbemClassObject::EndMethodEnumeration");
    }
    HRESULT STDMETHODCALLTYPE GetMethodQualifierSet(LPCWSTR, IWbemQualifierSet **) override
    {
        return unexpected("IWbemClassObject::GetMethodQualifierSet");
    }
    HRESULT STDMETHODCALLTYPE GetMethodOrigin(LPCWSTR, BSTR *) override
    {
        return unexpected("IWbemClassObject::GetMethodOrigin");
    }
};
