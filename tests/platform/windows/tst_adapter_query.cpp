#include "windows/Win32Seams.h"

#include <QTest>

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace {

constexpr unsigned long anyFamily = 0;
constexpr unsigned long ipv4 = 2;
constexpr unsigned long skipMulticast = 4;
constexpr unsigned long bufferTooSmall = 111;
constexpr unsigned long noAdapters = 232;
constexpr unsigned long room = 16000;

struct Call
{
    unsigned long family;
    unsigned long flags;
    bool hasRoom;
    unsigned long size;
};

} // namespace

/// The calls that query the adapters.
class AdapterQuery : public QObject
{
    Q_OBJECT

private slots:
    void asksForTheSizeAndThenForTheAdapters();
    void isNotRepeated_data();
    void isNotRepeated();
};

void AdapterQuery::asksForTheSizeAndThenForTheAdapters()
{
    QVector<Call> calls;
    const ListAdapters list = [&](unsigned long family, unsigned long flags, void *found,
                                  unsigned long *size) {
        calls.append({family, flags, found != nullptr, *size});
        if (found == nullptr) {
            *size = room;
            return bufferTooSmall;
        }
        std::memset(found, 0, room); // one adapter without properties
        return reinterpret_cast<std::uintptr_t>(found) % alignof(std::max_align_t) == 0 ? 0UL : 1UL;
    };
    const AdapterList found = networkAdaptersBy(list);
    QCOMPARE(found.error, 0U);
    QCOMPARE(found.adapters.size(), 1);
    QCOMPARE(calls.size(), 2);
    QCOMPARE(calls.at(0).family, anyFamily);
    QCOMPARE(calls.at(0).flags, 0UL);
    QVERIFY(!calls.at(0).hasRoom);
    QCOMPARE(calls.at(0).size, 0UL);
    QCOMPARE(calls.at(1).family, ipv4);
    QCOMPARE(calls.at(1).flags, skipMulticast);
    QVERIFY(calls.at(1).hasRoom);
    QCOMPARE(calls.at(1).size, room);
}

void AdapterQuery::isNotRepeated_data()
{
    QTest::addColumn<unsigned long>("error");
    QTest::newRow("an adapter came in between") << bufferTooSmall;
    QTest::newRow("no adapters") << noAdapters;
}

void AdapterQuery::isNotRepeated()
{
    QFETCH(unsigned long, error);
    int calls = 0;
    const ListAdapters list = [&](unsigned long, unsigned long, void *, unsigned long *) {
        ++calls;
        return error;
    };
    const AdapterList found = networkAdaptersBy(list);
    QCOMPARE(found.error, quint32(error));
    QVERIFY(found.adapters.isEmpty());
    QCOMPARE(calls, 2);
}

QTEST_GUILESS_MAIN(AdapterQuery)
#include "tst_adapter_query.moc"
