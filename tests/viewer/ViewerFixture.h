#pragma once

#include "DebugCapture.h"
#include "LogViewer.h"
#include "Part.h"
#include "ScratchFolder.h"

#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QToolButton>

#include <utility>

/// A viewer with a scratch folder for its logs. Captures the debug output.
class ViewerFixture
{
public:
    explicit ViewerFixture(LineSearch search = systemLineSearch)
        : viewer(nullptr, std::move(search))
    {
    }

    template <typename T>
    T *find(const char *name) const
    {
        return &part<T>(viewer, name);
    }

    [[nodiscard]] QTableWidget &table() const { return *find<QTableWidget>("tableWidget"); }

    /// Shows the window; returns false on timeout.
    bool show()
    {
        viewer.show();
        return QTest::qWaitForWindowExposed(&viewer);
    }
    /// Shows and activates the window.
    bool activate()
    {
        viewer.show();
        viewer.activateWindow();
        return QTest::qWaitForWindowActive(&viewer);
    }

    bool open(const QString &path) { return viewer.openLogFile(path.toStdString()); }

    /// Opens a new file with these lines, each followed by a line feed.
    bool openLines(const QByteArrayList &lines)
    {
        return open(folder.file(QString("%1.log").arg(++opened),
                                lines.isEmpty() ? QByteArray() : lines.join('\n') + '\n'));
    }

    /// Opens this file of the test data.
    bool openData(const char *name)
    {
        return open(QFINDTESTDATA(QString("../data/viewer/") + name));
    }

    [[nodiscard]] QString text(int row, int column) const
    {
        const QTableWidgetItem *const item = table().item(row, column);
        return item != nullptr ? item->text() : "no item";
    }

    [[nodiscard]] QStringList row(int row) const
    {
        QStringList texts;
        for (int column = 0; column < table().columnCount(); ++column)
            texts.append(text(row, column));
        return texts;
    }

    [[nodiscard]] QString tip(int row, int column) const
    {
        const QTableWidgetItem *const item = table().item(row, column);
        return item != nullptr ? item->toolTip() : "no item";
    }

    [[nodiscard]] int filledRows() const
    {
        int count = 0;
        for (int i = 0; i < table().rowCount(); ++i)
            count += table().item(i, 3) != nullptr ? 1 : 0;
        return count;
    }

    [[nodiscard]] QList<int> hiddenRows() const
    {
        QList<int> rows;
        for (int i = 0; i < table().rowCount(); ++i) {
            if (table().isRowHidden(i))
                rows.append(i);
        }
        return rows;
    }

    void call(const char *slot) { QVERIFY(QMetaObject::invokeMethod(&viewer, slot)); }

    void search(const QString &keyword)
    {
        find<QLineEdit>("lineEdit")->setText(keyword);
        find<QPushButton>("btnSearch")->click();
    }

    void pressEnter(const QString &keyword)
    {
        find<QLineEdit>("lineEdit")->setText(keyword);
        QTest::keyClick(find<QLineEdit>("lineEdit"), Qt::Key_Return);
    }

    [[nodiscard]] static QString clipboard()
    {
        return QGuiApplication::clipboard()->text(QClipboard::Clipboard);
    }

    DebugCapture output;
    ScratchFolder folder;
    LogViewer viewer;

private:
    int opened = 0;
};

/// The texts of a row with only a message.
inline QStringList messageOnly(const QString &message)
{
    const QString none = "no item";
    return {none, none, none, message};
}

/// A structured log line.
inline QByteArray logLine(const QByteArray &level, const QByteArray &message = "frame received")
{
    return "2024-03-02 12:00:00.250 " + level + " [00123] [CameraClient] " + message;
}
