#pragma once

#include <QByteArray>
#include <QString>

/// A file in memory that has a path while the object exists.
class MemoryFile
{
public:
    explicit MemoryFile(const QByteArray &contents = {});
    ~MemoryFile();
    MemoryFile(const MemoryFile &) = delete;
    MemoryFile &operator=(const MemoryFile &) = delete;

    [[nodiscard]] QString path() const;
    [[nodiscard]] QByteArray read() const;
    /// Replaces its contents.
    void write(const QByteArray &contents);

private:
    int descriptor;
};
