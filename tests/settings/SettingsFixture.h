#pragma once

#include "DebugCapture.h"
#include "Hub.h"
#include "LogSettingsDlg.h"
#include "ModalDialog.h"
#include "Part.h"
#include "ScratchFolder.h"

#include <QFileDialog>
#include <QRadioButton>
#include <QTest>

#include <functional>
#include <memory>

/// A settings window with a scratch camera client. If the client has no properties file, the window
/// asks for one; the file dialog then returns `chooses`, or is cancelled if that is empty.
struct SettingsFixture
{
    SettingsFixture()
    {
        resetHub();
        client.iconPath = scratch.path("Client/QZviewer.exe,0");
        client.pathSeparators = "\\/";
        ModalDialog::setRunner([this](QDialog &dialog) { return answer(dialog); });
    }
    ~SettingsFixture() { ModalDialog::setRunner({}); }
    SettingsFixture(const SettingsFixture &) = delete;
    SettingsFixture &operator=(const SettingsFixture &) = delete;

    static QString defaultName() { return "Client/SDKLOG_default.properties"; }

    /// Creates the client's properties file with @p contents.
    QString properties(const QByteArray &contents) { return scratch.file(defaultName(), contents); }
    [[nodiscard]] QByteArray written() const { return scratch.read(defaultName()); }

    void open() { window = std::make_unique<LogSettingsDlg>(nullptr, client); }
    /// Opens the window on the client's properties file with @p contents; returns its path.
    QString open(const QByteArray &contents)
    {
        const QString path = properties(contents);
        open();
        return path;
    }

    template <typename Widget>
    Widget *find(const char *name) const
    {
        return &part<Widget>(*window, name);
    }
    [[nodiscard]] QRadioButton *radio(const char *name) const { return find<QRadioButton>(name); }

    /// The checked level, for example "INFO".
    [[nodiscard]] QString shownLevel() const
    {
        QStringList checked;
        for (const char *name : {"radioINFO", "radioDEBUG", "radioFATAL"}) {
            if (radio(name)->isChecked())
                checked.append(QString::fromLatin1(name).mid(5));
        }
        return checked.join(' ');
    }

    ScratchFolder scratch;
    DebugCapture output;
    CameraClient client;
    QString chooses;                                  ///< result of the file dialog
    std::function<void(const QFileDialog &)> onAsked; ///< inspects the file dialog
    int asked = 0;                                    ///< number of file dialogs opened
    std::unique_ptr<LogSettingsDlg> window;

private:
    int answer(QDialog &dialog)
    {
        auto &files = dynamic_cast<QFileDialog &>(dialog);
        ++asked;
        if (onAsked)
            onAsked(files);
        if (chooses.isEmpty())
            return QDialog::Rejected;
        files.selectFile(chooses);
        return QDialog::Accepted;
    }
};
