#include "Fuzz.h"

#include <QLoggingCategory>

#include <clocale>
#include <cstdio>
#include <cstdlib>

// Called once, before the first input.
extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);

extern "C" int LLVMFuzzerInitialize(int * /*argc*/, char *** /*argv*/)
{
    // File names are UTF-8 whatever the environment.
    demand(std::setlocale(LC_ALL, "C.UTF-8") != nullptr, "a UTF-8 locale");
    // Ignore messages about unusual inputs.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return 0;
}

void demand(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "rule violated: %s\n", what);
    std::abort();
}
