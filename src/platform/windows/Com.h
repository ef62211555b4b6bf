#pragma once

#include <objbase.h>
#include <oleauto.h>

// Owners of what COM hands out. None can be copied; each gives back what it holds at its end.

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

    /// Where a call puts the reference that it hands out. Only while it holds none.
    [[nodiscard]] Interface **out() { return &object; }
    [[nodiscard]] void **outAsVoid() { return reinterpret_cast<void **>(&object); }
    [[nodiscard]] Interface *get() const { return object; }
    Interface *operator->() const { return object; }

private:
    Interface *object = nullptr;
};

/// A text as COM passes it.
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

/// A value of any type. Empty and all zeros until a call fills it.
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
