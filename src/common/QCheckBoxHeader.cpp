#include "QCheckBoxHeader.h"

#include <QCheckBox>
#include <QEvent>
#include <QPainter>

namespace {
constexpr int boxLeftOfCentre = 6;
constexpr int boxTop = 12; // below the header's top, whatever its height
} // namespace

QCheckBoxHeader::QCheckBoxHeader(int column, Qt::Orientation orientation, QWidget *parent)
    : QHeaderView(orientation, parent)
    , checkColumn(column)
    , checkBox(new QCheckBox(this))
{
    checkBox->setAccessibleName(tr("All rows"));
    connect(checkBox, &QCheckBox::clicked, this, &QCheckBoxHeader::onCheckBoxClicked);
    setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

QCheckBoxHeader::~QCheckBoxHeader()
{
    delete checkBox;
}

void QCheckBoxHeader::setChecked(bool checked)
{
    checkBox->setChecked(checked);
}

void QCheckBoxHeader::paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const
{
    painter->save();
    QHeaderView::paintSection(painter, rect, logicalIndex);
    painter->restore();
    if (logicalIndex == checkColumn)
        placeBox(rect);
}

void QCheckBoxHeader::paintEvent(QPaintEvent *event)
{
    QHeaderView::paintEvent(event);
    // Scrolling moves a section's pixels without repainting it; hidden sections are not painted.
    const int start = sectionViewportPosition(checkColumn);
    const int size = sectionSize(checkColumn);
    if (size == 0)
        checkBox->hide();
    else if (orientation() == Qt::Horizontal)
        placeBox({start, 0, size, height()});
    else
        placeBox({0, start, width(), size});
}

void QCheckBoxHeader::placeBox(const QRect &section) const
{
    checkBox->move(section.center().x() - boxLeftOfCentre, boxTop);
    checkBox->show();
}

void QCheckBoxHeader::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        checkBox->setAccessibleName(tr("All rows"));
    QHeaderView::changeEvent(event);
}

void QCheckBoxHeader::mousePressEvent(QMouseEvent *event)
{
    QHeaderView::mousePressEvent(event);
}

void QCheckBoxHeader::onCheckBoxClicked()
{
    emit checkStausChange(checkBox->isChecked());
}

#include "moc_QCheckBoxHeader.cpp"
