#include "OwnMethods.h"
#include "QCheckBoxHeader.h"
#include "QUserCheckBox.h"

#include <QPainter>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTest>

class CheckBoxHeader : public QObject
{
    Q_OBJECT

private slots:
    void isAHeaderWithOneSignalAndOneSlot();
    void alignsItsTextsLeft();
    void placesTheBoxInItsSection_data();
    void placesTheBoxInItsSection();
    void placesTheBoxInAPaintedSection();
    void placesTheBoxInAVerticalHeader();
    void keepsTheBoxAtTwelvePixelsInAnyHeight_data();
    void keepsTheBoxAtTwelvePixelsInAnyHeight();
    void movesTheBoxWithItsSection();
    void movesTheBoxWithItsSectionWhenScrolled();
    void hidesTheBoxWithItsSection();
    void showsTheBoxWhenItsSectionIsPainted();
    void emitsTheNewStateWhenClicked();
    void setsTheBoxWithoutASignal();
    void passesPressesOnItsSectionsToTheBaseClass();
    void deletesTheBoxBeforeItself();
    void userCheckBoxKnowsItsRow();
};

namespace {

/// A visible table of three columns with the header.
struct Fixture
{
    explicit Fixture(int checkColumn = 0, int height = 36)
        : header(new QCheckBoxHeader(checkColumn, Qt::Horizontal, &table))
        , box(header->findChild<QCheckBox *>())
    {
        table.setHorizontalHeader(header);
        header->setFixedHeight(height);
        header->setMinimumSectionSize(20); // whatever the font
        table.setColumnWidth(0, 51);
        table.setColumnWidth(1, 80);
        table.setColumnWidth(2, 120);
        table.resize(400, 300);
        table.show();
        header->grab(); // paints it
    }

    QTableWidget table{2, 3};
    QCheckBoxHeader *header;
    QCheckBox *box;
};

} // namespace

void CheckBoxHeader::isAHeaderWithOneSignalAndOneSlot()
{
    QCOMPARE(QCheckBoxHeader::staticMetaObject.superClass(), &QHeaderView::staticMetaObject);
    const OwnMethods own = ownMethods(QCheckBoxHeader::staticMetaObject);
    QCOMPARE(own.signalsOf, QStringList{"checkStausChange(bool)"});
    QCOMPARE(own.slotsOf, QStringList{"onCheckBoxClicked()"});
}

void CheckBoxHeader::alignsItsTextsLeft()
{
    const QCheckBoxHeader header(0, Qt::Horizontal, nullptr);
    QCOMPARE(header.orientation(), Qt::Horizontal);
    QCOMPARE(header.defaultAlignment(), Qt::AlignLeft | Qt::AlignVCenter);
    const auto *box = header.findChild<QCheckBox *>();
    QVERIFY(box != nullptr);
    QCOMPARE(box->parentWidget(), &header);
}

void CheckBoxHeader::placesTheBoxInItsSection_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QPoint>("expected");
    // Columns of 51, 80 and 120 pixels: their middle pixels are 25, 51 + 39 and 131 + 59.
    QTest::newRow("first") << 0 << QPoint(25 - 6, 12);
    QTest::newRow("second") << 1 << QPoint(90 - 6, 12);
    QTest::newRow("third") << 2 << QPoint(190 - 6, 12);
}

void CheckBoxHeader::placesTheBoxInItsSection()
{
    QFETCH(int, column);
    const Fixture fixture(column);
    QTEST(fixture.box->pos(), "expected");
}

void CheckBoxHeader::placesTheBoxInAPaintedSection()
{
    struct Header : QCheckBoxHeader
    {
        using QCheckBoxHeader::paintSection;
        using QCheckBoxHeader::QCheckBoxHeader;
    };
    QTableWidget table(2, 3);
    auto *header = new Header(1, Qt::Horizontal, &table);
    table.setHorizontalHeader(header);
    auto *box = header->findChild<QCheckBox *>();
    box->hide();
    QImage image(300, 100, QImage::Format_RGB32);
    QPainter painter(&image);
    header->paintSection(&painter, QRect(100, 0, 51, 36), 0); // another section
    QVERIFY(box->isHidden());
    header->paintSection(&painter, QRect(100, 0, 51, 36), 1);
    QCOMPARE(box->pos(), QPoint(125 - 6, 12));
    QVERIFY(!box->isHidden());
}

void CheckBoxHeader::placesTheBoxInAVerticalHeader()
{
    QTableWidget table(3, 2);
    auto *header = new QCheckBoxHeader(1, Qt::Vertical, &table);
    table.setVerticalHeader(header);
    header->setFixedWidth(51);
    header->grab();
    QCOMPARE(header->findChild<QCheckBox *>()->pos(), QPoint(25 - 6, 12));
}

void CheckBoxHeader::keepsTheBoxAtTwelvePixelsInAnyHeight_data()
{
    QTest::addColumn<int>("height");
    for (const int height : {20, 36, 60, 100})
        QTest::addRow("%d", height) << height;
}

void CheckBoxHeader::keepsTheBoxAtTwelvePixelsInAnyHeight()
{
    QFETCH(int, height);
    const Fixture fixture(0, height);
    QCOMPARE(fixture.header->height(), height);
    QCOMPARE(fixture.box->y(), 12);
}

void CheckBoxHeader::movesTheBoxWithItsSection()
{
    Fixture fixture(1);
    fixture.table.setColumnWidth(0, 71);
    fixture.header->grab();
    QCOMPARE(fixture.box->pos(), QPoint(104, 12));
    fixture.header->moveSection(1, 0); // to the left end
    fixture.header->grab();
    QCOMPARE(fixture.box->pos(), QPoint(33, 12));
}

void CheckBoxHeader::movesTheBoxWithItsSectionWhenScrolled()
{
    Fixture fixture;
    fixture.table.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    fixture.table.resize(150, 300);
    QVERIFY(QTest::qWaitForWindowExposed(&fixture.table));
    QScrollBar *bar = fixture.table.horizontalScrollBar();
    for (const int by : {10, 60, 90, 0}) {
        bar->setValue(by);
        QCOMPARE(bar->value(), by);
        QTRY_COMPARE(fixture.box->pos(), QPoint(25 - 6 - by, 12));
    }
}

void CheckBoxHeader::hidesTheBoxWithItsSection()
{
    Fixture fixture;
    fixture.header->setSectionHidden(0, true);
    QTRY_VERIFY(!fixture.box->isVisible());
    fixture.header->setSectionHidden(0, false);
    QTRY_VERIFY(fixture.box->isVisible());
}

void CheckBoxHeader::showsTheBoxWhenItsSectionIsPainted()
{
    Fixture fixture;
    fixture.box->hide();
    fixture.header->grab();
    QVERIFY(fixture.box->isVisible());

    Fixture without(7); // no such section
    without.box->hide();
    without.header->grab();
    QVERIFY(!without.box->isVisible());
}

void CheckBoxHeader::emitsTheNewStateWhenClicked()
{
    Fixture fixture;
    QSignalSpy changed(fixture.header, &QCheckBoxHeader::checkStausChange);
    for (const bool expected : {true, false, true}) {
        QTest::mouseClick(fixture.box, Qt::LeftButton, Qt::NoModifier, QPoint(6, 6));
        QCOMPARE(fixture.box->isChecked(), expected);
        QCOMPARE(changed.size(), 1);
        QCOMPARE(changed.takeFirst().first().toBool(), expected);
    }
}

void CheckBoxHeader::setsTheBoxWithoutASignal()
{
    Fixture fixture;
    QSignalSpy changed(fixture.header, &QCheckBoxHeader::checkStausChange);
    for (const bool checked : {true, true, false, true}) {
        fixture.header->setChecked(checked);
        QCOMPARE(fixture.box->isChecked(), checked);
    }
    QCOMPARE(changed.size(), 0);

    QTest::mouseClick(fixture.box, Qt::LeftButton, Qt::NoModifier, QPoint(6, 6));
    QCOMPARE(changed.size(), 1);
    QCOMPARE(changed.first().first().toBool(), false);
}

void CheckBoxHeader::passesPressesOnItsSectionsToTheBaseClass()
{
    Fixture fixture;
    fixture.header->setSectionsClickable(true);
    QSignalSpy pressed(fixture.header, &QHeaderView::sectionPressed);
    QTest::mousePress(fixture.header->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(90, 20));
    QCOMPARE(pressed.size(), 1);
    QCOMPARE(pressed.first().first().toInt(), 1);
}

void CheckBoxHeader::deletesTheBoxBeforeItself()
{
    auto *header = new QCheckBoxHeader(0, Qt::Horizontal, nullptr);
    QByteArray stillA;
    connect(header->findChild<QCheckBox *>(), &QObject::destroyed, this,
            [&] { stillA = header->metaObject()->className(); });
    delete header;
    QCOMPARE(stillA, QByteArray("QCheckBoxHeader"));
}

void CheckBoxHeader::userCheckBoxKnowsItsRow()
{
    QWidget parent;
    const QUserCheckBox alone(7);
    const QUserCheckBox child(0, &parent);
    QCOMPARE(alone.tableRow(), 7);
    QCOMPARE(alone.parent(), nullptr);
    QCOMPARE(child.tableRow(), 0);
    QCOMPARE(child.parent(), &parent);
    QCOMPARE(QUserCheckBox::staticMetaObject.superClass(), &QCheckBox::staticMetaObject);
    QCOMPARE(QUserCheckBox::staticMetaObject.methodCount(),
             QCheckBox::staticMetaObject.methodCount());
}

QTEST_MAIN(CheckBoxHeader)
#include "tst_check_box_header.moc"
