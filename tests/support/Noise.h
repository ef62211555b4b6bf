#pragma once

#include <QByteArray>

/// Incompressible bytes, always the same for the same @p seed.
[[nodiscard]] inline QByteArray noise(int size, quint32 seed = 1)
{
    QByteArray bytes(size, Qt::Uninitialized);
    quint32 state = seed;
    for (char &byte : bytes) {
        state = state * 1664525U + 1013904223U;
        byte = char(state >> 24);
    }
    return bytes;
}
