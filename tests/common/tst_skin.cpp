#include "CWaitDialog.h"
#include "DebugCapture.h"
#include "Part.h"
#include "Skin.h"
#include "WorkingFolder.h"

#include <QBuffer>
#include <QImage>
#include <QLabel>
#include <QMovie>
#include <QTest>
#include <QWidget>

class SkinTest : public QObject
{
    Q_OBJECT

private slots:
    void namesItsFilesFromTheWorkingDirectory();
    void putsTheFontsDirectlyBehindTheMainSheet();
    void needsBothFiles_data();
    void needsBothFiles();
    void isInTheWorkingDirectoryIfItExists();
    void isInTheFallbackFolderOtherwise();
    void isNotASkinWithoutTheProgramsFolder();
    void isNeverMixedFromTwoFolders();
    void isMissingWithoutEither();
    void showsThePicturesOfTheFallbackFolder();
    void playsTheAnimationOfTheFallbackFolder();
    void findsThePicturesOfAFormsSheet();
    void leavesAFormsSheetAsItIs();
};

namespace {

QString mainSheet()
{
    return "Skins/Default/Vantrel/style.qss";
}

QString fontSheet()
{
    return "Skins/Default/Vantrel/style_chn_font.qss";
}

QString picture()
{
    return "Skins/Default/Vantrel/picture.png";
}

const char pictureSheet[] = "QLabel { border-image: url(Skins/Default/Vantrel/picture.png); }";

QByteArray png(Qt::GlobalColor colour)
{
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(colour);
    QBuffer file;
    image.save(&file, "PNG");
    return file.data();
}

/// The colour in the middle of a label with the skin's style sheet.
QColor colourOfPicture()
{
    QLabel label;
    label.resize(16, 16);
    Skin::applyStyleSheet(label);
    return label.grab().toImage().pixelColor(8, 8);
}

/// A folder with its own skin, whose name has special characters of sheets and paths.
struct OtherFolder : ScratchFolder
{
    OtherFolder() { Skin::setFallbackFolder(path(name)); }
    QString skinFile(const QString &file, const QByteArray &contents)
    {
        return this->file(name + '/' + file, contents);
    }
    const QString name = "a (b) 'c' 错误 100%";
};

} // namespace

void SkinTest::namesItsFilesFromTheWorkingDirectory()
{
    QCOMPARE(Skin::styleSheet, "Skins/Default/Vantrel/style.qss");
    QCOMPARE(Skin::chineseFonts, "Skins/Default/Vantrel/style_chn_font.qss");
    QCOMPARE(Skin::englishFonts, "Skins/Default/Vantrel/style_eng_font.qss");
    QCOMPARE(Skin::busyAnimation, "./Skins/Default/Vantrel/Icon_Common_Processing.gif");
}

void SkinTest::putsTheFontsDirectlyBehindTheMainSheet()
{
    WorkingFolder folder;
    folder.file(mainSheet(), "QLabel { color: red; }");
    folder.file(fontSheet(), "/* 字体 */ QLabel { font-size: 9pt; }\n");
    QWidget widget;
    Skin::applyStyleSheet(widget, Skin::chineseFonts);
    QCOMPARE(widget.styleSheet(), "QLabel { color: red; }/* 字体 */ QLabel { font-size: 9pt; }\n");
}

void SkinTest::needsBothFiles_data()
{
    QTest::addColumn<QString>("onlyFile");
    QTest::newRow("no fonts") << mainSheet();
    QTest::newRow("no main sheet") << fontSheet();
    QTest::newRow("neither") << "Skins/other.qss";
}

void SkinTest::needsBothFiles()
{
    QFETCH(QString, onlyFile);
    WorkingFolder folder;
    folder.file(onlyFile, "QLabel { color: red; }");
    const DebugCapture output;
    QWidget widget;
    widget.setStyleSheet("QLabel { color: blue; }");
    Skin::applyStyleSheet(widget, Skin::chineseFonts);
    QCOMPARE(widget.styleSheet(), "QLabel { color: blue; }");
    QCOMPARE(output.lines(), QStringList());
}

void SkinTest::isInTheWorkingDirectoryIfItExists()
{
    OtherFolder other;
    other.skinFile(mainSheet(), "QLabel { color: blue; }");
    WorkingFolder folder;
    folder.file(mainSheet(), pictureSheet);
    QWidget widget;
    Skin::applyStyleSheet(widget);
    QCOMPARE(widget.styleSheet(), QString::fromLatin1(pictureSheet));
    QCOMPARE(Skin::path(Skin::styleSheet), mainSheet());
}

void SkinTest::isInTheFallbackFolderOtherwise()
{
    const WorkingFolder folder;
    OtherFolder other;
    other.skinFile(mainSheet(), "QLabel { color: red; }");
    other.skinFile(fontSheet(), "QLabel { font-size: 9pt; }");
    QWidget widget;
    Skin::applyStyleSheet(widget, Skin::chineseFonts);
    QCOMPARE(widget.styleSheet(), "QLabel { color: red; }QLabel { font-size: 9pt; }");
}

void SkinTest::isNotASkinWithoutTheProgramsFolder()
{
    OtherFolder other;
    other.skinFile(mainSheet(), "QLabel { color: red; }");
    WorkingFolder folder;
    folder.folder("Skins/Default"); // another program's skin
    QWidget widget;
    Skin::applyStyleSheet(widget);
    QCOMPARE(widget.styleSheet(), "QLabel { color: red; }");
}

void SkinTest::isNeverMixedFromTwoFolders()
{
    OtherFolder other;
    other.skinFile(mainSheet(), "QLabel { color: red; }");
    other.skinFile(fontSheet(), "QLabel { font-size: 9pt; }");
    WorkingFolder folder;
    folder.file(mainSheet(), "QLabel { color: blue; }");
    QWidget widget;
    Skin::applyStyleSheet(widget, Skin::chineseFonts);
    QCOMPARE(widget.styleSheet(), QString());
}

void SkinTest::isMissingWithoutEither()
{
    const WorkingFolder folder;
    const OtherFolder other;
    const DebugCapture output;
    QWidget widget;
    widget.setStyleSheet(QString::fromLatin1(pictureSheet));
    Skin::applyStyleSheet(widget);
    Skin::applyStyleSheet(widget, Skin::chineseFonts);
    QCOMPARE(widget.styleSheet(), QString::fromLatin1(pictureSheet));
    QCOMPARE(Skin::path(Skin::styleSheet), mainSheet());
    QCOMPARE(output.lines(), QStringList());
}

void SkinTest::showsThePicturesOfTheFallbackFolder()
{
    const WorkingFolder folder;
    OtherFolder other;
    other.skinFile(mainSheet(), pictureSheet);
    other.skinFile(picture(), png(Qt::red));
    QCOMPARE(colourOfPicture(), QColor(Qt::red));
}

void SkinTest::playsTheAnimationOfTheFallbackFolder()
{
    const WorkingFolder folder;
    OtherFolder other;
    other.skinFile(
        "Skins/Default/Vantrel/Icon_Common_Processing.gif",
        QByteArray::fromHex("47494638396101000100800000000000ffffff21f90400010000002c00000"
                            "00001000100000202440100003b"));
    const CWaitDialog dialog(nullptr);
    QVERIFY(part<QLabel>(dialog, "waitLabel").movie()->isValid());
}

void SkinTest::findsThePicturesOfAFormsSheet()
{
    const WorkingFolder folder;
    OtherFolder other;
    other.skinFile(picture(), png(Qt::green));
    QLabel label;
    label.resize(16, 16);
    label.setStyleSheet(QString::fromLatin1(pictureSheet));
    Skin::findPictures(label);
    QCOMPARE(label.grab().toImage().pixelColor(8, 8), QColor(Qt::green));
}

void SkinTest::leavesAFormsSheetAsItIs()
{
    OtherFolder other;
    other.skinFile(picture(), png(Qt::green));
    WorkingFolder folder;
    folder.file(picture(), png(Qt::red));
    QLabel label;
    label.resize(16, 16);
    label.setStyleSheet(QString::fromLatin1(pictureSheet));
    Skin::findPictures(label);
    QCOMPARE(label.styleSheet(), QString::fromLatin1(pictureSheet));
    QCOMPARE(label.grab().toImage().pixelColor(8, 8), QColor(Qt::red));
}

QTEST_MAIN(SkinTest)
#include "tst_skin.moc"
