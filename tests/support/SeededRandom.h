#pragma once

#include <QRandomGenerator>
#include <QString>

/// A reproducible random generator: it prints its seed, which VANTREL_SEED sets.
[[nodiscard]] inline QRandomGenerator seededRandom()
{
    bool given = false;
    quint32 seed = qEnvironmentVariable("VANTREL_SEED").toUInt(&given);
    if (!given)
        seed = QRandomGenerator::system()->generate();
    qInfo("VANTREL_SEED=%u", seed);
    return QRandomGenerator(seed);
}

/// The number of repetitions in a test: the variable @p name, by default @p usual.
[[nodiscard]] inline int times(const char *name, int usual)
{
    bool given = false;
    const int count = qEnvironmentVariableIntValue(name, &given);
    return given && count > 0 ? count : usual;
}
