#pragma once

#include <QRandomGenerator>
#include <QString>

/// Chance that can be had again: the seed is printed, and taken from VANTREL_SEED where it is set.
[[nodiscard]] inline QRandomGenerator seededRandom()
{
    bool given = false;
    quint32 seed = qEnvironmentVariable("VANTREL_SEED").toUInt(&given);
    if (!given)
        seed = QRandomGenerator::system()->generate();
    qInfo("VANTREL_SEED=%u", seed);
    return QRandomGenerator(seed);
}

/// How often a test does what it does: @p usual, or the number in the variable @p name.
[[nodiscard]] inline int times(const char *name, int usual)
{
    bool given = false;
    const int count = qEnvironmentVariableIntValue(name, &given);
    return given && count > 0 ? count : usual;
}
