#include "ScratchFolder.h"
#include "windows/WindowlessConsole.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>

#include <array>
#include <cstdio>
#include <cstring>

#include <windows.h>

namespace {

constexpr const char *asChild = "--report-console";
constexpr const char *asTaker = "--take-a-console";

/// Output of this program as a child process: whether it has a console, and whether the console has
/// a window.
QByteArray consoleOfThisProcess()
{
    QByteArray answer = GetConsoleCP() != 0 ? "console" : "no console";
    return answer += GetConsoleWindow() != nullptr ? ", window" : ", no window";
}

/// Starts this program the way the search starts its command. @p command must not be quoted as a
/// whole.
QByteArray consoleOfAChild()
{
    const QByteArray command =
        QDir::toNativeSeparators(QCoreApplication::applicationFilePath()).toLocal8Bit() + ' ' +
        asChild;
    FILE *const pipe = _popen(command.constData(), "r");
    if (pipe == nullptr)
        return "not started";
    std::array<char, 200> answer{};
    const bool hasOutput = std::fgets(answer.data(), int(answer.size()), pipe) != nullptr;
    _pclose(pipe);
    return hasOutput ? QByteArray(answer.data()) : QByteArray("no output");
}

int takeAConsole()
{
    FreeConsole(); // as a program with windows starts
    return takeWindowlessConsole() ? 0 : 1;
}

} // namespace

/// The console that keeps console programs from opening windows.
class WindowlessConsole : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void isThereAndHasNoWindow();
    void isTakenOnce();
    void isThatOfProgramsStartedThroughAPipe();
    void comesFromTheSystemsOwnCommandProcessor();
};

void WindowlessConsole::initTestCase()
{
    FreeConsole(); // GUI programs start without one
    QCOMPARE(consoleOfThisProcess(), QByteArray("no console, no window"));
}

void WindowlessConsole::isThereAndHasNoWindow()
{
    QVERIFY(takeWindowlessConsole());
    QCOMPARE(consoleOfThisProcess(), QByteArray("console, no window"));
}

void WindowlessConsole::isTakenOnce()
{
    std::array<DWORD, 8> before{};
    std::array<DWORD, 8> after{};
    QVERIFY(takeWindowlessConsole());
    const DWORD users = GetConsoleProcessList(before.data(), DWORD(before.size()));
    QVERIFY(takeWindowlessConsole());
    QVERIFY(GetConsoleProcessList(after.data(), DWORD(after.size())) <= users);
}

void WindowlessConsole::isThatOfProgramsStartedThroughAPipe()
{
    QVERIFY(takeWindowlessConsole());
    QCOMPARE(consoleOfAChild(), QByteArray("console, no window"));
}

void WindowlessConsole::comesFromTheSystemsOwnCommandProcessor()
{
    ScratchFolder scratch;
    const QString program = scratch.path("program.exe");
    QVERIFY(QFile::copy(QCoreApplication::applicationFilePath(), program));
    scratch.file("cmd.exe", "no program at all");
    QCOMPARE(QProcess::execute(program, {asTaker}), 0);
}

int main(int argc, char **argv)
{
    if (argc == 2 && std::strcmp(argv[1], asChild) == 0) {
        std::fputs(consoleOfThisProcess().constData(), stdout);
        return 0;
    }
    if (argc == 2 && std::strcmp(argv[1], asTaker) == 0)
        return takeAConsole();
    QCoreApplication application(argc, argv);
    WindowlessConsole test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_windowless_console.moc"
