#include "DebugCapture.h"
#include "Skin.h"
#include "WorkingFolder.h"

#include <QWidget>
#include <QtTest>

class SkinTest : public QObject
{
    Q_OBJECT

private slots:
    void namesItsFilesFromTheWorkingDirectory();
    void putsTheFontsDirectlyBehindTheMainSheet();
    void needsBothFiles_data();
    void needsBothFiles();
};

namespace {

QString mainSheet()
{
    return QStringLiteral("Skins/Default/Vantrel/style.qss");
}

QString fontSheet()
{
    return QStringLiteral("Skins/Default/Vantrel/style_chn_font.qss");
}

} // namespace

void SkinTest::namesItsFilesFromTheWorkingDirectory()
{
    QCOMPARE(Skin::styleSheet, QLatin1String("Skins/Default/Vantrel/style.qss"));
    QCOMPARE(Skin::chineseFonts, QLatin1String("Skins/Default/Vantrel/style_chn_font.qss"));
    QCOMPARE(Skin::englishFonts, QLatin1String("Skins/Default/Vantrel/style_eng_font.qss"));
    QCOMPARE(Skin::busyAnimation,
             QLatin1String("./Skins/Default/Vantrel/Icon_Common_Processing.gif"));
}

void SkinTest::putsTheFontsDirectlyBehindTheMainSheet()
{
    WorkingFolder folder;
    folder.file(mainSheet(), "QLabel { color: red; }");
    folder.file(fontSheet(), "/* 字体 */ QLabel { font-size: 9pt; }\n");
    QWidget widget;
    Skin::applyStyleSheet(widget, Skin::chineseFonts);
    QCOMPARE(widget.styleSheet(),
             QString::fromUtf8("QLabel { color: red; }/* 字体 */ QLabel { font-size: 9pt; }\n"));
}

void SkinTest::needsBothFiles_data()
{
    QTest::addColumn<QString>("onlyFile");
    QTest::newRow("no fonts") << mainSheet();
    QTest::newRow("no main sheet") << fontSheet();
    QTest::newRow("neither") << QStringLiteral("Skins/other.qss");
}

void SkinTest::needsBothFiles()
{
    QFETCH(QString, onlyFile);
    WorkingFolder folder;
    folder.file(onlyFile, "QLabel { color: red; }");
    const DebugCapture output;
    QWidget widget;
    widget.setStyleSheet(QStringLiteral("QLabel { color: blue; }"));
    Skin::applyStyleSheet(widget, Skin::chineseFonts);
    QCOMPARE(widget.styleSheet(), QStringLiteral("QLabel { color: blue; }"));
    QCOMPARE(output.lines(), QStringList());
}

QTEST_MAIN(SkinTest)
#include "tst_skin.moc"
