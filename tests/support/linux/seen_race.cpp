// A program with a race, in the way the program's own threads could have one: a QThread and the
// main thread write the same field, and nothing orders them. CTest wants it reported, so that
// nothing that is told to ThreadSanitizer about Qt can blind it to our own code unnoticed.

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
