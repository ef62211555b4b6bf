#include <QTest>

#include <windows.h>

/// What Windows reads from the executable before running it.
class ProgramFile : public QObject
{
    Q_OBJECT

private slots:
    void hasAVersion_data();
    void hasAVersion();
    void hasAnIconForEverySize();
    void hasTheManifestsSettings_data();
    void hasTheManifestsSettings();
    void leavesTheCodePageToWindows();
};

namespace {

const QString program = VANTREL_PROGRAM;

std::wstring path()
{
    return QDir::toNativeSeparators(QFileInfo(program).absoluteFilePath()).toStdWString();
}

QByteArray versionBlock()
{
    DWORD ignored = 0;
    const DWORD size = GetFileVersionInfoSizeW(path().c_str(), &ignored);
    QByteArray block(int(size), '\0');
    if (size == 0 || GetFileVersionInfoW(path().c_str(), 0, size, block.data()) == FALSE)
        return {};
    return block;
}

QString versionText(const QString &name)
{
    const QByteArray block = versionBlock();
    const std::wstring query = ("\\StringFileInfo\\040904b0\\" + name).toStdWString();
    void *value = nullptr;
    UINT length = 0;
    if (block.isEmpty() || VerQueryValueW(block.data(), query.c_str(), &value, &length) == FALSE)
        return {};
    return QString::fromWCharArray(static_cast<const wchar_t *>(value));
}

/// The manifest, comments included.
QString manifest()
{
    HMODULE module = LoadLibraryExW(path().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(24));
    HGLOBAL loaded = found != nullptr ? LoadResource(module, found) : nullptr;
    if (loaded == nullptr)
        return {};
    const QString all = QString::fromUtf8(static_cast<const char *>(LockResource(loaded)),
                                          int(SizeofResource(module, found)));
    FreeLibrary(module);
    return all;
}

} // namespace

void ProgramFile::hasAVersion_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("value");

    const QString version = VANTREL_VERSION;
    QTest::newRow("product") << "ProductName"
                             << "Vantrel";
    QTest::newRow("product version") << "ProductVersion" << version;
    QTest::newRow("file version") << "FileVersion" << version;
    QTest::newRow("company") << "CompanyName" << VANTREL_VENDOR;
    QTest::newRow("file") << "OriginalFilename"
                          << "Vantrel.exe";
}

void ProgramFile::hasAVersion()
{
    QFETCH(QString, name);
    QFETCH(QString, value);
    QCOMPARE(versionText(name), value);
}

void ProgramFile::hasAnIconForEverySize()
{
    for (const int size : {16, 32, 48, 256}) {
        HICON icon = nullptr;
        const UINT found =
            PrivateExtractIconsW(path().c_str(), 0, size, size, &icon, nullptr, 1, 0);
        QVERIFY2(found == 1 && icon != nullptr, qPrintable(QString::number(size)));
        DestroyIcon(icon);
    }
}

void ProgramFile::hasTheManifestsSettings_data()
{
    QTest::addColumn<QString>("part");

    QTest::newRow("the user's own rights") << "level=\"asInvoker\"";
    QTest::newRow("sharpness on every monitor") << ">PerMonitorV2, PerMonitor<";
    QTest::newRow("long paths") << ">true</longPathAware>";
    QTest::newRow("today's controls") << "\"Microsoft.Windows.Common-Controls\"";
    QTest::newRow("any processor") << "processorArchitecture=\"*\"/>";
    QTest::newRow("any processor's controls") << "processorArchitecture=\"*\" publicKeyToken";
    QTest::newRow("Windows 10") << "{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}";
}

void ProgramFile::hasTheManifestsSettings()
{
    QFETCH(QString, part);
    QVERIFY2(manifest().contains(part), qPrintable(manifest()));
}

void ProgramFile::leavesTheCodePageToWindows()
{
    QVERIFY(!manifest().contains("activeCodePage"));
}

QTEST_GUILESS_MAIN(ProgramFile)
#include "tst_program_file.moc"
