#pragma once

#include <objbase.h>
#include <oleauto.h>

// RAII owners of COM resources. Not copyable.

/// The calling thread's membership in the multithreaded apartment.
class ComApartment
{
public:
    ComApartment()
        : result(CoInitializeEx(nullptr, COINIT_MULTITHREADED))
    {
    }
    ~ComApartment()
    {
        if (joined())
            CoUninitialize();
    }
    ComApartment(const ComApartment &) = delete;
    ComApartment &operator=(const ComApartment &) = delete;

    [[nodiscard]] bool joined() const { return SUCCEEDED(result); }

private:
    HRESULT result;
};

/// One reference to a COM object, or none.
template <typename Interface>
class ComPointer
{
public:
    ComPointer() = default;
    ~ComPointer()
    {
        if (object != nullptr)
            object->Release();
    }
    ComPointer(const ComPointer &) = delete;
    ComPointer &operator=(const ComPointer &) = delete;

    /// Output parameter for a call that returns a reference. Must be empty.
    [[nodiscard]] Interface **out() { return &object; }
    [[nodiscard]] void **outAsVoid() { return reinterpret_cast<void **>(&object); }
    [[nodiscard]] Interface *get() const { return object; }
    Interface *operator->() const { return object; }

private:
    Interface *object = nullptr;
};

/// A COM string.
class ComText
{
public:
    explicit ComText(const wchar_t *characters)
        : text(SysAllocString(characters))
    {
    }
    ~ComText() { SysFreeString(text); }
    ComText(const ComText &) = delete;
    ComText &operator=(const ComText &) = delete;

    [[nodiscard]] BSTR get() const { return text; }

private:
    BSTR text;
};

/// A COM variant; empty and all zeros until a call fills it.
class ComValue
{
public:
    ComValue() = default;
    ~ComValue() { VariantClear(&value); }
    ComValue(const ComValue &) = delete;
    ComValue &operator=(const ComValue &) = delete;

    [[nodiscard]] VARIANT *out() { return &value; }
    [[nodiscard]] const VARIANT &get() const { return value; }

private:
    VARIANT value{};
};
