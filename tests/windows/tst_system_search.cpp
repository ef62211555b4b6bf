#include "DebugCapture.h"
#include "Diagnostics.h"
#include "LineSearch.h"
#include "ScratchFolder.h"

#include <QTest>

#include <windows.h>

/// A search from the command line through findstr to its lines.
class SystemSearch : public QObject
{
    Q_OBJECT

private slots:
    void findsChineseWordsWhereTheCodePageIsChinese_data();
    void findsChineseWordsWhereTheCodePageIsChinese();
    void reachesFoldersThatTheCodePageCannotSpell_data();
    void reachesFoldersThatTheCodePageCannotSpell();
    void logsAPathThatHasNoOtherName();
};

namespace {

QByteArray found(const QString &path, const char *keyword)
{
    QByteArray lines;
    if (!systemLineSearch(keyword, path, [&lines](const char *piece) { lines += piece; }))
        return "not started";
    return lines;
}

} // namespace

void SystemSearch::findsChineseWordsWhereTheCodePageIsChinese_data()
{
    QTest::addColumn<QByteArray>("word");
    QTest::newRow("two characters") << QByteArray("错误");
    QTest::newRow("four characters") << QByteArray("相机错误");
    QTest::newRow("three characters") << QByteArray("错误码");
    QTest::newRow("one character") << QByteArray("错");
    QTest::newRow("among others") << QByteArray("frame.*错误.*x");
}

void SystemSearch::findsChineseWordsWhereTheCodePageIsChinese()
{
    if (PRIMARYLANGID(GetSystemDefaultLangID()) != LANG_CHINESE)
        QSKIP("this Windows is not Chinese; the test is run in one that is, too");
    QFETCH(QByteArray, word);
    ScratchFolder scratch;
    const QByteArray line = "frame 1 相机错误码 x\n";
    const QString log = scratch.file("a.log", "before\n" + line + "after\n");
    const char *const unpaired = "no pair of bytes of this code page ends with the word's last one";
    QEXPECT_FAIL("three characters", unpaired, Continue);
    QEXPECT_FAIL("one character", unpaired, Continue);
    QCOMPARE(found(log, word.constData()), line);
}

void SystemSearch::reachesFoldersThatTheCodePageCannotSpell_data()
{
    QTest::addColumn<QString>("folder");
    QTest::newRow("Latin") << "cameras";
    QTest::newRow("Chinese") << "相机";
    QTest::newRow("Greek") << "ΩΔ";
    QTest::newRow("accents") << "éü";
    QTest::newRow("Korean") << "한국어";
    QTest::newRow("letters that look alike") << "Ślad";
    QTest::newRow("all of them") << "相機한국éŚ";
}

void SystemSearch::reachesFoldersThatTheCodePageCannotSpell()
{
    QFETCH(QString, folder);
    ScratchFolder scratch;
    const QString log = scratch.file(folder + "/" + folder + ".log", "one\ntwo\n");
    QCOMPARE(found(log, "t.o"), QByteArray("two\n"));
}

void SystemSearch::logsAPathThatHasNoOtherName()
{
    const QString path = "C:/no such folder/相한é.log"; // has no short name
    const DebugCapture output;
    QCOMPARE(found(path, "x"), QByteArray());
    QVERIFY(output.lines().isEmpty());
    const Diagnostics on;
    QCOMPARE(found(path, "x"), QByteArray());
    QCOMPARE(output.lines(),
             QStringList{QString("findstr cannot be given this path: \"%1\"").arg(path)});
}

QTEST_GUILESS_MAIN(SystemSearch)
#include "tst_system_search.moc"
