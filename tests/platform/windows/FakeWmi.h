#pragma once

#include "windows/Com.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

/// Fake WMI services: while it exists, every locator created in this process belongs to it. The
/// thread that constructs it joins the multithreaded apartment and must make the queries.
class FakeWmi
{
public:
    struct Module
    {
        std::optional<QString> partNumber;
        std::optional<QString> capacity; ///< WMI returns 64-bit numbers as text
        std::optional<qint32> speed;
    };

    FakeWmi();
    ~FakeWmi();
    FakeWmi(const FakeWmi &) = delete;
    FakeWmi &operator=(const FakeWmi &) = delete;

    // Results of the calls.
    HRESULT creation = S_OK;
    HRESULT connection = S_OK;
    HRESULT blanket = S_OK;
    HRESULT query = S_OK;
    QVector<Module> modules;
    HRESULT end; ///< of Next() after the last module; initially WBEM_S_FALSE

    // Recorded calls.
    QStringList calls;          ///< with arguments, in order
    QStringList unexpected;     ///< calls of methods that must not be called
    QVector<qint32> capacities; ///< the low 32 bits of each returned Capacity value
    int living = 0;             ///< objects

private:
    const ComApartment apartment;
    DWORD registration = 0;
};
