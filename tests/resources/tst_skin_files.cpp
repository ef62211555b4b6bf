#include "ExportInfoDlg.h"
#include "StyleSheetRules.h"
#include "WorkingFolder.h"

#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QMovie>
#include <QTest>

/// The skin beside the program.
class SkinFiles : public QObject
{
    Q_OBJECT

private slots:
    void areAllThere_data();
    void areAllThere();
    void namePicturesThatAreThere_data();
    void namePicturesThatAreThere();
    void animateTheBusyIndicator();
    void drawEveryPicture();
    void haveTwinsOfTwiceTheSize();
    void areAllNamedByASheet();
    void giveAllColumnHeadsOneWeight();
    void carryTheNoticesOwnRules();
};

namespace {

QStringList styleSheets()
{
    return {"Skins/Default/Vantrel/style.qss", "Skins/Default/Vantrel/style_chn_font.qss",
            "Skins/Default/Vantrel/style_eng_font.qss"};
}

QString contents(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    return QString::fromUtf8(file.readAll());
}

QStringList pictures()
{
    QStringList found;
    for (const char *folder : {"Skins/Default/Vantrel", "Skins/Default/Tarnwick"}) {
        const QDir dir(QString::fromLatin1(folder));
        for (const QString &name : dir.entryList({"*.png"}, QDir::Files))
            found.append(dir.filePath(name));
    }
    return found;
}

} // namespace

void SkinFiles::areAllThere_data()
{
    QTest::addColumn<QString>("path");
    for (const char *path :
         {"Skins/Default/Vantrel/style.qss", "Skins/Default/Vantrel/style_chn_font.qss",
          "Skins/Default/Vantrel/style_eng_font.qss",
          "./Skins/Default/Vantrel/Icon_Common_Processing.gif",
          "Skins/Default/Tarnwick/Icon_Save_Tips_OK.png",
          "Skins/Default/Vantrel/Btn_Common_Folder_Normal.png",
          "Skins/Default/Vantrel/Btn_Common_Folder_Hover.png",
          "Skins/Default/Vantrel/Btn_Common_Folder_Pressed.png",
          "Skins/Default/Vantrel/Btn_Common_Folder_Disable.png"})
        QTest::newRow(path) << QString::fromLatin1(path);
}

void SkinFiles::areAllThere()
{
    QFETCH(QString, path);
    QFile file(path);
    QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.errorString()));
    QVERIFY(file.size() > 0);
}

void SkinFiles::namePicturesThatAreThere_data()
{
    QTest::addColumn<QString>("url");
    int urls = 0;
    for (const QString &sheet : styleSheets()) {
        for (const QString &url : styleSheetUrls(contents(sheet)))
            QTest::addRow("%d: %s", ++urls, qPrintable(url)) << url;
    }
    QVERIFY(urls > 0);
}

void SkinFiles::namePicturesThatAreThere()
{
    QFETCH(QString, url);
    // Including letter case, which some file systems ignore.
    const QFileInfo picture(url);
    QVERIFY(picture.dir().entryList(QDir::Files).contains(picture.fileName()));
    QVERIFY(QImageReader(url).canRead());
}

void SkinFiles::animateTheBusyIndicator()
{
    const QMovie movie("./Skins/Default/Vantrel/Icon_Common_Processing.gif");
    QVERIFY(movie.isValid());
    QVERIFY(movie.frameCount() > 1);
    QCOMPARE(movie.loopCount(), -1); // endless
    const QImageReader first(movie.fileName());
    QVERIFY(first.size().width() <= 100 && first.size().height() <= 60); // fits in its label
}

void SkinFiles::drawEveryPicture()
{
    QVERIFY(!pictures().isEmpty());
    for (const QString &picture : pictures())
        QVERIFY2(!QImage(picture).isNull(), qPrintable(picture));
}

void SkinFiles::haveTwinsOfTwiceTheSize()
{
    for (const QString &picture : pictures()) {
        if (picture.endsWith("@2x.png"))
            continue;
        QString twin = picture;
        twin.replace(".png", "@2x.png");
        QVERIFY2(QFile::exists(twin), qPrintable(twin));
        QCOMPARE(QImageReader(twin).size(), QImageReader(picture).size() * 2);
    }
}

void SkinFiles::areAllNamedByASheet()
{
    QStringList named;
    for (const QString &sheet : styleSheets())
        named += styleSheetUrls(contents(sheet));
    for (QString picture : pictures()) {
        picture.remove("@2x");
        QVERIFY2(named.contains(picture), qPrintable(picture));
    }
}

void SkinFiles::giveAllColumnHeadsOneWeight()
{
    const StyleSheetRules rules = styleSheetRules(contents(styleSheets().first()));
    QStringList weights;
    for (auto rule = rules.cbegin(); rule != rules.cend(); ++rule) {
        if (rule.key().contains("QHeaderView"))
            weights += rule->value("font-weight");
    }
    weights.removeAll(QString());
    QCOMPARE(weights.size(), 1);
}

void SkinFiles::carryTheNoticesOwnRules()
{
    const StyleSheetRules shipped = styleSheetRules(contents(styleSheets().first()));
    // Without a skin the notice keeps the sheet of its form.
    const WorkingFolder unstyled;
    const StyleSheetRules own = styleSheetRules(ExportInfoDlg(nullptr).styleSheet());
    QCOMPARE(own.size(), 5);
    for (auto rule = own.cbegin(); rule != own.cend(); ++rule) {
        const auto inSkin = shipped.value(rule.key());
        for (auto property = rule->cbegin(); property != rule->cend(); ++property)
            QCOMPARE(inSkin.value(property.key()), property.value());
    }
}

QTEST_MAIN(SkinFiles)
#include "tst_skin_files.moc"
