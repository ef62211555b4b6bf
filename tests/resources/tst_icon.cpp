#include <QFile>
#include <QIcon>
#include <QImageReader>
#include <QResource>
#include <QTest>

class Icon : public QObject
{
    Q_OBJECT

private slots:
    void isStoredCompressed();
    void holdsASizeForEveryPlace_data();
    void holdsASizeForEveryPlace();
    void holdsNoEmptyPicture();
    void leavesTheDeleteButtonWithoutPictures();
};

namespace {
const QString file = ":/Resources/log.ico";
}

void Icon::isStoredCompressed()
{
    const QResource resource(file);
    QVERIFY(resource.isValid());
    QCOMPARE(resource.compressionAlgorithm(), QResource::ZlibCompression);
    QVERIFY(resource.size() < resource.uncompressedSize());
}

void Icon::holdsASizeForEveryPlace_data()
{
    QTest::addColumn<int>("size");
    for (const int size : {16, 32, 48, 256})
        QTest::addRow("%d pixels", size) << size;
}

void Icon::holdsASizeForEveryPlace()
{
    QFETCH(int, size);
    QVERIFY(QIcon(file).availableSizes().contains(QSize(size, size)));
}

void Icon::holdsNoEmptyPicture()
{
    QImageReader reader(file, "ico");
    QVERIFY2(reader.canRead(), qPrintable(reader.errorString()));
    for (int i = 0; i < reader.imageCount(); ++i) {
        QVERIFY(reader.jumpToImage(i));
        const QImage image = reader.read();
        QVERIFY(!image.isNull());
        // It has both opaque and transparent pixels.
        int painted = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                painted += qAlpha(image.pixel(x, y)) > 127 ? 1 : 0;
        }
        QVERIFY2(painted > image.width() * image.height() / 10, qPrintable(QString::number(i)));
        QVERIFY2(painted < image.width() * image.height(), qPrintable(QString::number(i)));
    }
}

void Icon::leavesTheDeleteButtonWithoutPictures()
{
    QVERIFY(!QFile::exists(":/Pic/Icon_Dialog_Delete_Normal.png"));
    QVERIFY(!QFile::exists(":/Pic/Icon_Dialog_Delete_Hover.png"));
}

QTEST_MAIN(Icon)
#include "tst_icon.moc"
