#pragma once

#include <QByteArray>
#include <QString>

/// A file that lies in memory and has a path all the same, as long as the object lives.
class MemoryFile
{
public:
    explicit MemoryFile(const QByteArray &contents = {});
    ~MemoryFile();
    MemoryFile(const MemoryFile &) = delete;
    MemoryFile &operator=(const MemoryFile &) = delete;

    [[nodiscard]] QString path() const;
    [[nodiscard]] QByteArray read() const;
    /// Replaces all that it holds.
    void write(const QByteArray &contents);

private:
    int descriptor;
};
