#include <QFile>
#include <QResource>
#include <QTest>
#include <QTranslator>
#include <QXmlStreamReader>
#include <QtEndian>

class Catalogues : public QObject
{
    Q_OBJECT

private slots:
    void holdExactlyTheirTexts_data();
    void holdExactlyTheirTexts();
    void holdTheirNumberOfMessages_data();
    void holdTheirNumberOfMessages();
    void leaveTheSourceTextWithoutAnEntry();
    void keepTheLevelNamesInEveryLanguage();
    void bringPluralRulesForEnglishOnly();
    void areStoredAsTheyAre();
};

namespace {

const QString englishFile = ":/Linguist_EN.qm";
const QString chineseFile = ":/Linguist_CN.qm";

/// A text of the program and its translations; null if there is none.
struct Row
{
    const char *context;
    const char *source;
    const char *english;
    const char *chinese;
};

const Row rows[] = {
    {"CommonMessageBox", "Form", "Form", "窗口"},
    {"CommonMessageBox", "Vantrel", nullptr, "Vantrel"},
    {"ExportInfoDlg", "Export info finished !", "Export info finished !", "导出信息结束！"},
    {"ExportInfoDlg", "Export selected info finished !", "Export selected info finished !",
     "导出所选信息结束！"},
    {"ExportInfoDlg", "View", nullptr, "查看"},
    {"LogSettingsDlg", "DEBUG", "DEBUG", "DEBUG"},
    {"LogSettingsDlg", "FATAL", "FATAL", "FATAL"},
    {"LogSettingsDlg", "INFO", "INFO", "INFO"},
    {"LogSettingsDlg", "Interval for update(ms)", "Interval for update(ms)", "刷新时间"},
    {"LogSettingsDlg", "Log Level Setting", "Log Level Setting", "日志等级"},
    {"LogSettingsDlg", "LogSettingsDlg", nullptr, "日志配置"},
    {"LogSettingsDlg", "Max.Displayed Logs", "Max.Displayed Logs", "最大显示行数"},
    {"LogSettingsDlg", "Select Log Config File", nullptr, "选择日志配置文件"},
    {"Vantrel", "Client Dump", nullptr, "客户端Dump"},
    {"Vantrel", "Event Type", "Event Type", "导出选项"},
    {"Vantrel", "Export", "Export", "导出"},
    {"Vantrel", "Export All SDK Log", "Export All SDK Log", "导出所有SDK日志"},
    {"Vantrel", "Export Selected SDK Log", "Export Selected SDK Log", "导出选择SDK日志"},
    {"Vantrel", "Export to File", "Export to File", "导出路径"},
    {"Vantrel", "Exporting information...", "Exporting information...", "正在导出信息..."},
    {"Vantrel", "File Name", "File Name", "文件名称"},
    {"Vantrel", "File Size", "File Size", "文件大小"},
    {"Vantrel", "File Time", "File Time", "文件时间"},
    {"Vantrel", "LogSource", "LogSource", nullptr},
    {"Vantrel", "LogSource(Process Name)", nullptr, "日志源（进程名）"},
    {"Vantrel", "Vantrel", nullptr, "Vantrel"},
    {"Vantrel", "NIC Information", "NIC Information", "网卡信息"},
    {"Vantrel", "SDK Log", "SDK Log", "SDK日志"},
    {"Vantrel", "Save ZIP File", "Save ZIP File", "保存ZIP压缩包"},
    {"Vantrel", "System Dump", "System Dump", "系统蓝屏日志"},
    {"Vantrel", "System Information", "System Information", "系统信息"},
    {"Vantrel", "System Log", "System Log", "系统日志"},
    {"LogViewer", "CopyAll", "CopyAll", "拷贝所有日志"},
    {"LogViewer", "CopySelected", "CopySelected", "拷贝选择日志"},
    {"LogViewer", "DEBUG", "DEBUG", "DEBUG"},
    {"LogViewer", "ERROR", "ERROR", "ERROR"},
    {"LogViewer", "INFO", "INFO", "INFO"},
    {"LogViewer", "Log Level", "Log Level", "日志等级"},
    {"LogViewer", "Log Message", "Log Message", "日志内容"},
    {"LogViewer", "Log Source", "Log Source", "日志来源"},
    {"LogViewer", "Log Timestamp", "Log Timestamp", "日志时间"},
    {"LogViewer", "LogViewer", nullptr, "日志浏览"},
    {"LogViewer", "More", nullptr, "更多"},
    {"LogViewer", "WARN", "WARN", "WARN"},
};

/// The body of a section of a compiled catalogue; null if it does not exist.
QByteArray section(const QString &catalogue, uchar tag)
{
    QFile file(catalogue);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.readAll();
    constexpr int magicSize = 16;
    constexpr int headSize = 5; // tag and length
    for (int at = magicSize; at + headSize <= bytes.size();) {
        const int length = qFromBigEndian<qint32>(bytes.constData() + at + 1);
        if (uchar(bytes.at(at)) == tag)
            return bytes.mid(at + headSize, length);
        at += headSize + length;
    }
    return {};
}

/// The number of translated messages in the source of a catalogue; -1 if it cannot be read.
int messagesInSource(const QString &language)
{
    QFile file(QString(VANTREL_CATALOGUE_SOURCES "/Linguist_%1.ts").arg(language));
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    int messages = 0;
    for (QXmlStreamReader xml(&file); !xml.atEnd();) {
        if (xml.readNext() != QXmlStreamReader::StartElement || xml.name() != "translation")
            continue;
        if (xml.attributes().hasAttribute("type"))
            return -1; // unfinished or obsolete
        ++messages;
    }
    return messages;
}

} // namespace

Q_DECLARE_METATYPE(const Row *)

void Catalogues::holdExactlyTheirTexts_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<const Row *>("row");
    QTest::addColumn<QString>("expected");
    for (const Row &row : rows) {
        QTest::addRow("English %s: %s", row.context, row.source)
            << englishFile << &row << QString::fromUtf8(row.english);
        QTest::addRow("Chinese %s: %s", row.context, row.source)
            << chineseFile << &row << QString::fromUtf8(row.chinese);
    }
}

void Catalogues::holdExactlyTheirTexts()
{
    QFETCH(QString, file);
    QFETCH(const Row *, row);
    QFETCH(QString, expected);
    QTranslator translator;
    QVERIFY(translator.load(file));
    const QString found = translator.translate(row->context, row->source);
    QCOMPARE(found, expected);
    QCOMPARE(found.isNull(), expected.isNull());
}

void Catalogues::holdTheirNumberOfMessages_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("messages");
    QTest::newRow("English") << "EN" << englishFile << 35;
    QTest::newRow("Chinese") << "CN" << chineseFile << 43;
}

void Catalogues::holdTheirNumberOfMessages()
{
    QFETCH(QString, language);
    QFETCH(QString, file);
    QFETCH(int, messages);
    constexpr uchar hashes = 0x42; // eight bytes per message
    QCOMPARE(section(file, hashes).size(), messages * 8);
    QCOMPARE(messagesInSource(language), messages);

    const bool english = file == englishFile;
    int inTable = 0;
    for (const Row &row : rows)
        inTable += (english ? row.english : row.chinese) != nullptr ? 1 : 0;
    QCOMPARE(inTable, messages);
}

void Catalogues::leaveTheSourceTextWithoutAnEntry()
{
    const auto shown = [](const char *context, const char *source) {
        return QCoreApplication::translate(context, source);
    };
    QTranslator english;
    QVERIFY(english.load(englishFile));
    QVERIFY(QCoreApplication::installTranslator(&english));
    QCOMPARE(shown("ExportInfoDlg", "View"), "View");
    QCOMPARE(shown("LogViewer", "LogViewer"), "LogViewer");
    QCOMPARE(shown("LogViewer", "More"), "More");
    QVERIFY(QCoreApplication::removeTranslator(&english));

    QTranslator chinese;
    QVERIFY(chinese.load(chineseFile));
    QVERIFY(QCoreApplication::installTranslator(&chinese));
    QCOMPARE(shown("Vantrel", "LogSource"), "LogSource");
    QCOMPARE(shown("Vantrel", "LogSource(Process Name)"), "日志源（进程名）");
    QCOMPARE(shown("CWaitDialog", "TextLabel"), "TextLabel");
    QCOMPARE(shown("CWaitDialog", "Dialog"), "Dialog");
}

void Catalogues::keepTheLevelNamesInEveryLanguage()
{
    for (const QString &file : {englishFile, chineseFile}) {
        QTranslator translator;
        QVERIFY(translator.load(file));
        for (const char *level : {"DEBUG", "ERROR", "INFO", "WARN"})
            QCOMPARE(translator.translate("LogViewer", level), QString::fromLatin1(level));
        for (const char *level : {"DEBUG", "FATAL", "INFO"})
            QCOMPARE(translator.translate("LogSettingsDlg", level), QString::fromLatin1(level));
    }
}

void Catalogues::bringPluralRulesForEnglishOnly()
{
    constexpr uchar pluralRules = 0x88;
    QVERIFY(!section(englishFile, pluralRules).isEmpty());
    QVERIFY(section(chineseFile, pluralRules).isEmpty());
}

void Catalogues::areStoredAsTheyAre()
{
    for (const QString &file : {englishFile, chineseFile}) {
        const QResource resource(file);
        QVERIFY2(resource.isValid(), qPrintable(file));
        QCOMPARE(resource.compressionAlgorithm(), QResource::NoCompression);
        // Version 1 of the format, which has no timestamps.
        QVERIFY(!resource.lastModified().isValid());
    }
}

QTEST_GUILESS_MAIN(Catalogues)
#include "tst_catalogues.moc"
