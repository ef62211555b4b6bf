#pragma once

#include "ZipArchive.h"

#include <QTest>

Q_DECLARE_METATYPE(ZipLimits)

// Most archive tests run twice: with Qt's writer, and with libzip by lowering the limits.

[[nodiscard]] inline ZipLimits nothingFits()
{
    ZipLimits limits;
    limits.archiveBytes = 0;
    return limits;
}

/// The rows of such a test, which fetches "limits".
inline void bothWriters()
{
    QTest::addColumn<ZipLimits>("limits");
    QTest::newRow("Qt's writer") << ZipLimits();
    QTest::newRow("large") << nothingFits();
}
