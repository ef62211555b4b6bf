#include "DebugCapture.h"
#include "Diagnostics.h"
#include "LineBlockReader.h"

#include <QBuffer>
#include <QTest>

namespace {

/// A device that delivers a text in chunks of a fixed size.
class Trickle : public QIODevice
{
public:
    Trickle(QByteArray contents, qint64 portion)
        : text(std::move(contents))
        , step(portion)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

protected:
    qint64 readData(char *data, qint64 size) override
    {
        const qint64 count = qMin(qMin(size, step), qint64(text.size()) - pos);
        std::copy_n(text.constData() + pos, count, data);
        pos += count;
        return count;
    }
    qint64 writeData(const char * /*data*/, qint64 /*size*/) override { return -1; }

private:
    QByteArray text;
    qint64 step;
    qint64 pos = 0;
};

/// A device that fails at the end of its text.
class Failing : public Trickle
{
public:
    using Trickle::Trickle;

protected:
    qint64 readData(char *data, qint64 size) override
    {
        const qint64 count = Trickle::readData(data, size);
        return count > 0 ? count : -1;
    }
};

QByteArray allOf(LineBlockReader &blocks, int *count = nullptr)
{
    QByteArray result;
    for (std::string_view block = blocks.next(); !block.empty(); block = blocks.next()) {
        result.append(block.data(), int(block.size()));
        if (count != nullptr)
            ++*count;
    }
    return result;
}

} // namespace

class LineBlockReaderTest : public QObject
{
    Q_OBJECT

private slots:
    void unifiesLineEnds_data();
    void unifiesLineEnds();
    void findsLineEndsWhereverThePortionsAreCut_data();
    void findsLineEndsWhereverThePortionsAreCut();
    void returnsWholeLinesOnly();
    void keepsLinesOfTenMegabytes();
    void truncatesALineAtItsLimitAndContinuesAfterIt();
    void distinguishesAFailedReadFromTheEnd();
    void logsProblemsOnceAFile();
    void isEmptyForAnEmptyText();
    void staysAtTheEnd();
    void staysAtTheEndOfATextThatGrows();
};

void LineBlockReaderTest::unifiesLineEnds_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("expected");

    QTest::newRow("line feeds") << QByteArray("a\nb\n") << QByteArray("a\nb\n");
    QTest::newRow("carriage returns before them")
        << QByteArray("a\r\nb\r\n") << QByteArray("a\nb\n");
    QTest::newRow("mixed") << QByteArray("a\nb\r\nc\n") << QByteArray("a\nb\nc\n");
    QTest::newRow("a lone one is content") << QByteArray("a\rb\n") << QByteArray("a\rb\n");
    QTest::newRow("two before a line feed") << QByteArray("a\r\r\n") << QByteArray("a\r\n");
    QTest::newRow("at the end of the text") << QByteArray("a\r") << QByteArray("a\r");
    QTest::newRow("empty lines") << QByteArray("\r\n\r\n\n") << QByteArray("\n\n\n");
    QTest::newRow("empty") << QByteArray() << QByteArray();
}

void LineBlockReaderTest::unifiesLineEnds()
{
    QFETCH(QByteArray, text);
    const std::size_t size = unifyLineEnds(text.data(), std::size_t(text.size()));
    QTEST(text.left(int(size)), "expected");
}

void LineBlockReaderTest::findsLineEndsWhereverThePortionsAreCut_data()
{
    QTest::addColumn<int>("portion");

    for (const int portion : {1, 2, 3, 7, 1000})
        QTest::newRow(QByteArray::number(portion).constData()) << portion;
}

void LineBlockReaderTest::findsLineEndsWhereverThePortionsAreCut()
{
    QFETCH(int, portion);
    Trickle text("one\r\ntwo\r\r\n\r\n\nthree\rfour\nlast\r", portion);
    LineBlockReader blocks(text);
    QCOMPARE(allOf(blocks), QByteArray("one\ntwo\r\n\n\nthree\rfour\nlast\r"));
}

void LineBlockReaderTest::returnsWholeLinesOnly()
{
    QByteArray text;
    for (int i = 0; i < 50'000; ++i)
        text += "line number " + QByteArray::number(i) + '\n';
    QBuffer device(&text);
    QVERIFY(device.open(QIODevice::ReadOnly));
    LineBlockReader blocks(device);
    QByteArray all;
    for (std::string_view block = blocks.next(); !block.empty(); block = blocks.next()) {
        QCOMPARE(block.back(), '\n');
        all.append(block.data(), int(block.size()));
    }
    QVERIFY(all == text);
}

void LineBlockReaderTest::keepsLinesOfTenMegabytes()
{
    QByteArray text = "short\n" + QByteArray(10'000'000, 'x') + "\r\nshort\n";
    QBuffer device(&text);
    QVERIFY(device.open(QIODevice::ReadOnly));
    LineBlockReader blocks(device);
    QVERIFY(allOf(blocks) == text.replace("\r\n", "\n"));
}

void LineBlockReaderTest::truncatesALineAtItsLimitAndContinuesAfterIt()
{
    const int limit = int(LineBlockReader::blockBytes) + 5;
    for (const int length : {limit - 1, limit, limit + 1, 3 * limit}) {
        QByteArray text = QByteArray(length, 'x') + "\nnext\n";
        QBuffer device(&text);
        QVERIFY(device.open(QIODevice::ReadOnly));
        LineBlockReader blocks(device, std::size_t(limit));
        QVERIFY(allOf(blocks) == QByteArray(qMin(length, limit), 'x') + "\nnext\n");
    }
}

void LineBlockReaderTest::distinguishesAFailedReadFromTheEnd()
{
    Failing broken("one\ntw", 3);
    LineBlockReader some(broken);
    QVERIFY(!some.failed());
    QCOMPARE(allOf(some), QByteArray("one\ntw"));
    QVERIFY(some.failed());

    Trickle whole("one\ntw", 3);
    LineBlockReader all(whole);
    QCOMPARE(allOf(all), QByteArray("one\ntw"));
    QVERIFY(!all.failed());
}

void LineBlockReaderTest::logsProblemsOnceAFile()
{
    const int limit = int(LineBlockReader::blockBytes);
    const QString path = "a.log";
    DebugCapture output;
    Trickle fitting(QByteArray(limit, 'x') + '\n', 100'000);
    LineBlockReader whole(fitting, std::size_t(limit));
    allOf(whole);
    QVERIFY(!whole.hasTruncatedLines());
    {
        const Diagnostics diagnostics;
        whole.logProblems(path);
    }
    QCOMPARE(output.take(), QStringList());

    Failing broken((QByteArray(2 * limit, 'x') + '\n').repeated(2), 100'000);
    LineBlockReader blocks(broken, std::size_t(limit));
    allOf(blocks);
    QVERIFY(blocks.hasTruncatedLines());
    blocks.logProblems(path);
    QCOMPARE(output.take(), QStringList());
    const Diagnostics diagnostics("vantrel.findstr");
    blocks.logProblems(path);
    QCOMPARE(output.take(),
             QStringList({"read failed: a.log", "line longer than 262144 bytes truncated: a.log"}));
}

void LineBlockReaderTest::isEmptyForAnEmptyText()
{
    QBuffer device;
    QVERIFY(device.open(QIODevice::ReadOnly));
    LineBlockReader blocks(device);
    QVERIFY(blocks.next().empty());
}

void LineBlockReaderTest::staysAtTheEnd()
{
    Trickle text("no line feed", 100);
    LineBlockReader blocks(text);
    QVERIFY(blocks.next() == "no line feed");
    QVERIFY(blocks.next().empty());
    QVERIFY(blocks.next().empty());
}

void LineBlockReaderTest::staysAtTheEndOfATextThatGrows()
{
    QByteArray text = "a\npar";
    QBuffer device(&text);
    QVERIFY(device.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    LineBlockReader blocks(device);
    QCOMPARE(blocks.next(), std::string_view("a\n"));
    QCOMPARE(blocks.next(), std::string_view("par"));
    text += "tial\nb\n";
    QVERIFY(blocks.next().empty()); // otherwise "tial" would be a line
}

QTEST_APPLESS_MAIN(LineBlockReaderTest)
#include "tst_line_block_reader.moc"
