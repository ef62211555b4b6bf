// A program with a race such as our own threads could have: a QThread and the main thread write the
// same field without synchronisation. CTest expects a report, so that the announcements about Qt
// cannot hide races in our own code.

#include <QCoreApplication>
#include <QThread>

namespace {

class Counter : public QThread
{
public:
    int count = 0;

protected:
    void run() override { ++count; }
};

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    Counter counter;
    counter.start();
    ++counter.count;
    counter.wait();
    return 0;
}
