#pragma once

#include "ZipArchive.h"

#include <QtTest>

Q_DECLARE_METATYPE(ZipLimits)

// Most tests of archives run twice: with Qt's writer, and with the one of large zips, which gets
// what is small but exceeds the limits.

[[nodiscard]] inline ZipLimits nothingFits()
{
    ZipLimits limits;
    limits.archiveBytes = 0;
    return limits;
}

/// The rows of such a test; it fetches "limits".
inline void bothWriters()
{
    QTest::addColumn<ZipLimits>("limits");
    QTest::newRow("Qt's writer") << ZipLimits();
    QTest::newRow("large") << nothingFits();
}
