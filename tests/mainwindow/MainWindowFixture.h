#pragma once

#include "CComboBoxEx.h"
#include "CTableWidget.h"
#include "CWaitDialog.h"
#include "DebugCapture.h"
#include "Hub.h"
#include "LogConfig.h"
#include "ModalDialog.h"
#include "Part.h"
#include "ScratchFolder.h"
#include "Vantrel.h"
#include "ZipContents.h"

#include <QApplication>
#include <QCheckBox>
#include <QHeaderView>
#include <QTest>

#include <memory>

/// A main window in a scratch home with the camera client registered, so that no file dialog opens
/// at startup. Set up the home folder first, then call open().
struct MainWindowFixture
{
    MainWindowFixture()
    {
        resetHub();
        environment.homeFolder = home.path();
        environment.client.iconPath = home.file("Client/QZviewer.exe") + ",0";
        environment.client.pathSeparators = "\\/";
        home.file("Client/SDKLOG_default.properties", infoFile);
        useLanguage("1");
    }
    ~MainWindowFixture() { ModalDialog::setRunner({}); }
    MainWindowFixture(const MainWindowFixture &) = delete;
    MainWindowFixture &operator=(const MainWindowFixture &) = delete;

    /// Sets the language in the client's file: "1" is English.
    void useLanguage(const QByteArray &lang)
    {
        home.file("AppData/Roaming/QZviewer/language.ini", "[language]\nlang=" + lang + '\n');
    }

    QString log(const QString &sourceAndName, const QByteArray &contents = "line\n",
                const QDateTime &modified = QDateTime::currentDateTime())
    {
        return home.file("QZSDK/" + sourceAndName, contents, modified);
    }

    void open() { window = std::make_unique<Vantrel>(nullptr, environment); }

    template <typename Widget>
    Widget *find(const char *name) const
    {
        return &part<Widget>(*window, name);
    }

    /// The window's wait dialog, which is not its child.
    [[nodiscard]] static CWaitDialog &waitDialog()
    {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (auto *dialog = qobject_cast<CWaitDialog *>(widget))
                return *dialog;
        }
        qFatal("there is no wait dialog");
    }
    [[nodiscard]] CTableWidget *table() const { return find<CTableWidget>("tableWidget"); }

    /// The check box of a row; null without a file.
    [[nodiscard]] QCheckBox *box(int row) const
    {
        const QWidget *cell = table()->cellWidget(row, 0);
        return cell != nullptr ? cell->findChild<QCheckBox *>() : nullptr;
    }
    [[nodiscard]] QCheckBox *headerBox() const
    {
        return table()->horizontalHeader()->findChild<QCheckBox *>();
    }
    [[nodiscard]] QString cell(int row, int column) const
    {
        const QTableWidgetItem *item = table()->item(row, column);
        return item != nullptr ? item->text() : QString();
    }
    [[nodiscard]] QStringList listedNames() const
    {
        QStringList names;
        for (int row = 0; row < table()->rowCount() && table()->item(row, 2) != nullptr; ++row)
            names.append(cell(row, 2));
        return names;
    }

    void call(const char *slot) const { QVERIFY(QMetaObject::invokeMethod(window.get(), slot)); }

    ScratchFolder home;
    DebugCapture output;
    UserEnvironment environment;
    std::unique_ptr<Vantrel> window;
};
