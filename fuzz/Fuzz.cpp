#include "Fuzz.h"

#include <QLoggingCategory>

#include <clocale>
#include <cstdio>
#include <cstdlib>

// Called once, before the first input.
extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);

extern "C" int LLVMFuzzerInitialize(int * /*argc*/, char *** /*argv*/)
{
    // Names of files are UTF-8, whatever environment the fuzzer was started in.
    demand(std::setlocale(LC_ALL, "C.UTF-8") != nullptr, "a UTF-8 locale");
    // What a room says about an odd input is not looked at here.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return 0;
}

void demand(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "not so: %s\n", what);
    std::abort();
}
