#pragma once

class QString;

// Files and folders that only their owner may use, whatever the umask. On a system where the folder
// around them decides who may, such as Windows, and on a disk without permissions they are as all
// others there. Any thread.

/// Makes an empty file at @p path, which is then opened for writing. A file that is there is
/// replaced, so that whoever has it open does not read what is written; what a link leads to is
/// emptied. Where it cannot be made, opening it says why.
void makePrivateFile(const QString &path);

/// Makes the folder at @p path, whose parent exists; one that is there becomes private. False:
/// there is none.
[[nodiscard]] bool makePrivateFolder(const QString &path);
