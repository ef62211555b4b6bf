#pragma once

#include "windows/Com.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

/// The system's management services as a test makes them up: as long as it lives, whoever creates
/// their locator in this process gets this one. The thread that builds it joins the multithreaded
/// apartment, and is the one to ask.
class FakeWmi
{
public:
    struct Module
    {
        std::optional<QString> partNumber;
        std::optional<QString> capacity; ///< a number too long for 32 bits comes as text
        std::optional<qint32> speed;
    };

    FakeWmi();
    ~FakeWmi();
    FakeWmi(const FakeWmi &) = delete;
    FakeWmi &operator=(const FakeWmi &) = delete;

    // What the calls return.
    HRESULT creation = S_OK;
    HRESULT connection = S_OK;
    HRESULT blanket = S_OK;
    HRESULT query = S_OK;
    QVector<Module> modules;
    HRESULT end; ///< of the call for a module behind the last one; at first a proper end

    // What was seen.
    QStringList calls;          ///< with their arguments, in their order
    QStringList unexpected;     ///< methods that nobody should call
    QVector<qint32> capacities; ///< the low 32 bits of what was handed out, as they stand
    int living = 0;             ///< objects

private:
    const ComApartment apartment;
    DWORD registration = 0;
};
