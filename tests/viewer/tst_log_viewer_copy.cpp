#include "ViewerFixture.h"

namespace {

QString lines(const QByteArrayList &expected)
{
    return QString::fromUtf8(expected.join('\n'));
}

QByteArrayList numberedLines(int count)
{
    QByteArrayList result;
    for (int i = 0; i < count; ++i)
        result.append(logLine("INFO", QByteArray::number(i)));
    return result;
}

void selectRows(QTableWidget &table, int first, int last)
{
    table.setRangeSelected(QTableWidgetSelectionRange(first, 0, last, 3), true);
}

} // namespace

class LogViewerCopy : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void copiesAllUpToTheFirstUnstructuredLine();
    void copiesHiddenRowsToo();
    void copiesNothingOfAnEmptyTable();
    void copiesWholeLinesNotCells();
    void copiesSelectedRowsOnceEach();
    void copiesSelectedRowsInTheOrderOfSelection();
    void copiesUnstructuredRowsThatAreSelected();
    void leavesOutSelectedRowsFromNumber10000On();
    void copiesWhatAFileSaysByteForByte();
    void doublesLineFeedsOfLinesThatWereFoundBySearching();
    void copiesTheSelectionByKey();
    void copyKeyLeavesTheClipboardAloneWithoutLinesToCopy();
    void leavesTheCopyKeyToTheSearchField();
};

void LogViewerCopy::init()
{
    QGuiApplication::clipboard()->setText("before");
}

void LogViewerCopy::copiesAllUpToTheFirstUnstructuredLine()
{
    ViewerFixture f;
    QVERIFY(f.openData("third_line_unstructured.log"));
    f.find<QAction>("actionCopyAll")->trigger();
    QCOMPARE(f.clipboard(), f.tip(0, 0) + '\n' + f.tip(1, 0));
}

void LogViewerCopy::copiesHiddenRowsToo()
{
    ViewerFixture f;
    QVERIFY(f.openData("every_level.log"));
    f.find<QCheckBox>("checkBoxINFO")->click();
    f.find<QAction>("actionCopyAll")->trigger();
    QCOMPARE(f.clipboard().count('\n'), 4);
    QVERIFY(f.clipboard().contains(" INFO "));
}

void LogViewerCopy::copiesNothingOfAnEmptyTable()
{
    ViewerFixture f;
    f.find<QAction>("actionCopyAll")->trigger();
    QCOMPARE(f.clipboard(), QString());
    init();
    f.find<QAction>("actionCopySelected")->trigger();
    QCOMPARE(f.clipboard(), QString());
}

void LogViewerCopy::copiesWholeLinesNotCells()
{
    ViewerFixture f;
    QVERIFY(f.openLines({logLine("INFO")}));
    f.table().item(0, 3)->setText("changed");
    f.find<QAction>("actionCopyAll")->trigger();
    QCOMPARE(f.clipboard(), lines({logLine("INFO")}));
}

void LogViewerCopy::copiesSelectedRowsOnceEach()
{
    ViewerFixture f;
    const QByteArrayList all = numberedLines(5);
    QVERIFY(f.openLines(all));
    selectRows(f.table(), 1, 3);
    f.find<QAction>("actionCopySelected")->trigger();
    QCOMPARE(f.clipboard(), lines(all.mid(1, 3)));
}

void LogViewerCopy::copiesSelectedRowsInTheOrderOfSelection()
{
    ViewerFixture f;
    const QByteArrayList all = numberedLines(5);
    QVERIFY(f.openLines(all));
    selectRows(f.table(), 4, 4);
    selectRows(f.table(), 0, 0);
    f.find<QAction>("actionCopySelected")->trigger();
    QCOMPARE(f.clipboard(), lines({all.at(4), all.at(0)}));
}

void LogViewerCopy::copiesUnstructuredRowsThatAreSelected()
{
    ViewerFixture f;
    QVERIFY(f.openLines({logLine("INFO"), "plain"}));
    selectRows(f.table(), 0, 6);
    f.find<QAction>("actionCopySelected")->trigger();
    QCOMPARE(f.clipboard(), lines({logLine("INFO"), "plain"}));
}

void LogViewerCopy::leavesOutSelectedRowsFromNumber10000On()
{
    ViewerFixture f;
    const QByteArrayList all = numberedLines(10'002);
    QVERIFY(f.openLines(all));
    selectRows(f.table(), 9'999, 10'000);
    f.find<QAction>("actionCopySelected")->trigger();
    QCOMPARE(f.clipboard(), lines({all.at(9'999)}));
}

void LogViewerCopy::copiesWhatAFileSaysByteForByte()
{
    ViewerFixture f;
    const QByteArrayList all{logLine("INFO", "  two  blanks\tand a tab "),
                             logLine("WARN", "打开失败 😀 <b>&amp;</b>")};
    QVERIFY(f.openLines(all));
    f.find<QAction>("actionCopyAll")->trigger();
    QCOMPARE(f.clipboard().toUtf8(), all.join('\n'));
}

void LogViewerCopy::doublesLineFeedsOfLinesThatWereFoundBySearching()
{
    ViewerFixture f;
    const QByteArrayList all = numberedLines(2);
    QVERIFY(f.openLines(all));
    f.search("INFO");
    f.find<QAction>("actionCopyAll")->trigger();
    QCOMPARE(f.clipboard(), lines({all.at(0), "", all.at(1), ""}));
}

void LogViewerCopy::copiesTheSelectionByKey()
{
    ViewerFixture f;
    const QByteArrayList all = numberedLines(5);
    QVERIFY(f.openLines(all));
    QVERIFY(f.activate());
    f.table().setFocus();
    selectRows(f.table(), 1, 2);
    QTest::keySequence(&f.table(), QKeySequence::Copy);
    QCOMPARE(f.clipboard(), lines(all.mid(1, 2)));
}

void LogViewerCopy::copyKeyLeavesTheClipboardAloneWithoutLinesToCopy()
{
    ViewerFixture f;
    QVERIFY(f.openLines(numberedLines(10'002)));
    QVERIFY(f.activate());
    f.table().setFocus();
    QTest::keySequence(&f.table(), QKeySequence::Copy);
    QCOMPARE(f.clipboard(), "before");
    QTest::keyClick(&f.table(), Qt::Key_End);
    QTest::keySequence(&f.table(), QKeySequence::Copy);
    QCOMPARE(f.clipboard(), "before");
    f.find<QAction>("actionCopySelected")->trigger();
    QCOMPARE(f.clipboard(), QString());
}

void LogViewerCopy::leavesTheCopyKeyToTheSearchField()
{
    ViewerFixture f;
    QVERIFY(f.openLines(numberedLines(2)));
    QVERIFY(f.activate());
    selectRows(f.table(), 0, 0);
    auto *const field = f.find<QLineEdit>("lineEdit");
    field->setText("keyword");
    field->setFocus();
    field->selectAll();
    QTest::keySequence(field, QKeySequence::Copy);
    QCOMPARE(f.clipboard(), "keyword");
}

QTEST_MAIN(LogViewerCopy)
#include "tst_log_viewer_copy.moc"
