#pragma once

#include "ScratchFolder.h"

#include <QDir>

/// A scratch folder that is the working directory while it exists, initially without a skin.
class WorkingFolder : public ScratchFolder
{
public:
    WorkingFolder() { QDir::setCurrent(path()); }
    ~WorkingFolder() { QDir::setCurrent(before); }
    WorkingFolder(const WorkingFolder &) = delete;
    WorkingFolder &operator=(const WorkingFolder &) = delete;

private:
    QString before = QDir::currentPath();
};
