#include "CommonMessageBox.h"

#include "FocusedButton.h"
#include "Skin.h"
#include "ui_CommonMessageBox.h"

#include <QCloseEvent>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QShowEvent>
#include <QTextBoundaryFinder>

#include <array>

namespace {
constexpr int narrowest = 300; // text width in pixels
constexpr int widest = 480;
constexpr int longestWord = 40; // characters

/// Adds break opportunities to long words, such as paths, where Unicode's rules offer none.
QString breakable(const QString &text)
{
    constexpr QChar mayBreak(0x200b);
    QTextBoundaryFinder lines(QTextBoundaryFinder::Line, text);
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, text);
    QString result;
    int wordStart = 0;
    for (int from = 0, to = characters.toNextBoundary(); to > 0;
         from = to, to = characters.toNextBoundary()) {
        lines.setPosition(from);
        if (lines.isAtBoundary())
            wordStart = from;
        else if (from - wordStart >= longestWord && !text.at(from).isSpace())
            result += mayBreak;
        result += text.midRef(from, to - from);
    }
    return result;
}

} // namespace

CommonMessageBox::CommonMessageBox(const QString &text, QMessageBox::StandardButtons buttons,
                                   QWidget *parent)
    : QDialog(parent)
    , ui(std::make_unique<Ui::CommonMessageBox>())
{
    ui->setupUi(this);
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    ui->mainTitleBar->showCloseButtonOnly();
    ui->mainTitleBar->setTitle(tr("Vantrel"));
    ui->lbText->setText(breakable(text));
    offer(buttons);
    Skin::applyStyleSheet(*this);
    fitToText();
}

CommonMessageBox::~CommonMessageBox() = default;

QMessageBox::StandardButton CommonMessageBox::getClickedButton() const
{
    return clickedButton;
}

void CommonMessageBox::showEvent(QShowEvent *event)
{
    if (!event->spontaneous()) // e.g. restored by the window system: still the same question
        clickedButton = QMessageBox::NoButton;
    QDialog::showEvent(event);
}

void CommonMessageBox::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Cancel))
        dismiss();
    else if (!clickFocusedButton(*this, *event))
        QDialog::keyPressEvent(event);
}

void CommonMessageBox::closeEvent(QCloseEvent *event)
{
    if (isVisible())
        dismiss();
    // A subclass may have kept it open.
    event->setAccepted(!isVisible());
}

void CommonMessageBox::on_btnOK_clicked()
{
    answer(QMessageBox::Ok);
}

void CommonMessageBox::on_btnCancel_clicked()
{
    answer(QMessageBox::Cancel);
}

void CommonMessageBox::on_btnYes_clicked()
{
    answer(QMessageBox::Yes);
}

void CommonMessageBox::on_btnNo_clicked()
{
    answer(QMessageBox::No);
}

void CommonMessageBox::offer(QMessageBox::StandardButtons buttons)
{
    struct Offer
    {
        QMessageBox::StandardButton button;
        QPushButton *widget;
        bool affirms;
    };
    const std::array<Offer, 4> offers{{{QMessageBox::Yes, ui->btnYes, true},
                                       {QMessageBox::Ok, ui->btnOK, true},
                                       {QMessageBox::No, ui->btnNo, false},
                                       {QMessageBox::Cancel, ui->btnCancel, false}}};
    const auto known = QMessageBox::Yes | QMessageBox::Ok | QMessageBox::No | QMessageBox::Cancel;
    if (!(buttons & known))
        buttons = QMessageBox::Ok;

    QPushButton *defaultButton = nullptr;
    QPushButton *lastShown = nullptr;
    int shown = 0;
    for (const Offer &choice : offers) {
        const bool wanted = buttons.testFlag(choice.button);
        choice.widget->setVisible(wanted);
        if (!wanted)
            continue;
        ++shown;
        lastShown = choice.widget;
        if (defaultButton == nullptr)
            defaultButton = choice.widget;
        if (!choice.affirms)
            escapeButton = choice.widget; // Cancel comes last and overrides No
    }
    if (shown == 1)
        escapeButton = lastShown;
    defaultButton->setDefault(true);
    defaultButton->setFocus();
}

void CommonMessageBox::fitToText()
{
    ensurePolished();
    ui->lbText->ensurePolished();
    const QFontMetrics metrics = ui->lbText->fontMetrics();
    const int natural = metrics.size(Qt::TextExpandTabs, ui->lbText->text()).width();
    ui->lbText->setMinimumWidth(qBound(narrowest, natural, widest));
    const int width = layout()->totalSizeHint().width();
    // Not adjustSize(), which limits the height to two thirds of the screen.
    resize(width, layout()->totalHeightForWidth(width));
}

void CommonMessageBox::answer(QMessageBox::StandardButton button)
{
    clickedButton = button;
    if (button == QMessageBox::Yes || button == QMessageBox::Ok)
        accept();
    else
        reject();
}

void CommonMessageBox::dismiss()
{
    if (escapeButton != nullptr)
        escapeButton->click();
    else
        reject();
}

#include "moc_CommonMessageBox.cpp"
