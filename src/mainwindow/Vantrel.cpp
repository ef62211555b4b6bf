#include "Vantrel.h"

#include "CConfiguration.h"
#include "CLogProcessThread.h"
#include "DisplayLanguage.h"
#include "LogSettingsDlg.h"
#include "LogViewer.h"
#include "Skin.h"
#include "ui_Vantrel.h"

#include <QAction>
#include <QCoreApplication>
#include <QLibraryInfo>
#include <QMenu>

Vantrel::Vantrel(QWidget *parent, const UserEnvironment &userEnvironment)
    : CommonDialog(parent, false, false)
    , ui(std::make_unique<Ui::Vantrel>())
    , environment(userEnvironment)
{
    ui->setupUi(this);
    setUpExportPath();
    ui->mainTitleBar->showCloseButtonOnly();
    ui->comboSource->setFocus(); // not the close button, which comes first in the tab order
    buildContextMenu();
    setUpTable();
    chooseLanguageAndStyle();
    findSources();
    offerSources();
    createWindows();
    startWorker();
    retranslate();
}

Vantrel::~Vantrel() = default;

void Vantrel::setUpExportPath()
{
    sdkRoot = environment.homeFolder + QStringLiteral("/QZSDK/");
    CConfiguration::instance()->exportPath = sdkRoot + QStringLiteral("UserLogInfo.zip");
    // The field may be too narrow for the path.
    connect(ui->lineEditPath, &QLineEdit::textChanged, ui->lineEditPath, &QWidget::setToolTip);
    ui->lineEditPath->setText(CConfiguration::instance()->exportPath);
}

void Vantrel::buildContextMenu()
{
    contextMenu = new QMenu(this);
    actionExportAll = contextMenu->addAction(QString());
    actionExportAll->setObjectName(QStringLiteral("actionExportAll"));
    actionExportSelected = contextMenu->addAction(QString());
    actionExportSelected->setObjectName(QStringLiteral("actionExportSelected"));
    connect(actionExportAll, &QAction::triggered, this, &Vantrel::onActionExportAllTriggered);
    connect(actionExportSelected, &QAction::triggered, this,
            &Vantrel::onActionExportSelectedTriggered);
}

void Vantrel::chooseLanguageAndStyle()
{
    const bool english = chooseLanguage(environment) == DisplayLanguage::English;
    // Only Qt's own file dialog uses these texts; the system's dialog has its own.
    if (!english && toolkitTranslator.load(QStringLiteral("qtbase_zh_CN"),
                                           QLibraryInfo::location(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&toolkitTranslator);
    // If a catalogue cannot be loaded, the English source texts remain.
    const QString suffix = english ? QStringLiteral("_EN.qm") : QStringLiteral("_CN.qm");
    (void)hintTranslator.load(QStringLiteral(":/Hints") + suffix);
    QCoreApplication::installTranslator(&hintTranslator);
    (void)translator.load(QStringLiteral(":/Linguist") + suffix);
    QCoreApplication::installTranslator(&translator);
    Skin::applyStyleSheet(*this, english ? Skin::englishFonts : Skin::chineseFonts);
    Skin::findPictures(*ui->btnSetExportPath);
    retranslate();
}

void Vantrel::retranslate()
{
    ui->retranslateUi(this);
    ui->mainTitleBar->setTitle(tr("Vantrel"));
    ui->btnSettings->setToolTip(QCoreApplication::translate(
        "LogSettingsDlg", "Log Level Setting")); // the label in the window it opens
    ui->tableWidget->setHorizontalHeaderLabels(
        {QString(), tr("File Time"), tr("File Name"), tr("File Size")});
    contextMenu->setAccessibleName(ui->tableWidget->accessibleName());
    actionExportAll->setText(tr("Export All SDK Log"));
    actionExportSelected->setText(tr("Export Selected SDK Log"));
    if (exportInfo != nullptr)
        exportInfo->retranslate();
    if (logSettings != nullptr)
        logSettings->retranslate();
    if (logViewer != nullptr)
        logViewer->retranslate();
}

void Vantrel::createWindows()
{
    exportInfo = new ExportInfoDlg(this);
    exportInfo->hide();
    exportInfo->raise();
    logSettings = new LogSettingsDlg(this, environment.client);
    logViewer = new LogViewer(this);
}

void Vantrel::startWorker()
{
    worker = std::make_unique<CLogProcessThread>();
    worker->start(QThread::InheritPriority);
    worker->setBasePath(sdkRoot);
    waitDialog.setProgressSource([this] { return worker->progress(); });
    connect(worker.get(), &CLogProcessThread::closeWaitDlg, this, &Vantrel::onCloseWaitDlg);
    connect(this, &Vantrel::showWaitDlg, this, &Vantrel::onShowWaitDlg);
    connect(ui->checkBoxClientDump, &QCheckBox::clicked, this,
            &Vantrel::onCheckBoxClientDumpClicked);
}

#include "moc_Vantrel.cpp"
