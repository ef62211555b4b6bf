#pragma once

#include "CommonDialog.h"
#include "CommonTitleBar.h"
#include "WorkingFolder.h"

#include <QCloseEvent>
#include <QEvent>
#include <QVBoxLayout>

/// A first base class that keeps the window from finding the skin.
struct WithoutSkin
{
    WorkingFolder folder;
};

/// A window like those of the forms: a CommonDialog with a title bar at the top, in Qt's own style.
/// Records the mouse events that the title bar passes on.
class KitWindow : private WithoutSkin, public CommonDialog
{
public:
    /// @p margin: pixels between the window's edges and the title bar.
    explicit KitWindow(bool byEdges = false, int margin = 0)
        : CommonDialog(nullptr, byEdges, false)
        , bar(new CommonTitleBar(this))
    {
        // The system's font may be too wide for this title bar.
        QFont font;
        font.setPixelSize(8);
        bar->setFont(font);
        bar->setMinimumHeight(36);
        bar->setMaximumHeight(36);
        auto *form = new QVBoxLayout(this);
        form->setContentsMargins(margin, margin, margin, margin);
        form->addWidget(bar);
        form->addStretch();
        setGeometry(place());
        show();
        letThrough.clear();
    }

    static QRect place() { return QRect(100, 150, 300, 200); }

    /// The global position of @p inBar.
    [[nodiscard]] QPoint at(const QPoint &inBar) const { return bar->mapToGlobal(inBar); }

    CommonTitleBar *bar;
    QList<QEvent::Type> letThrough;
    int closed = 0;

protected:
    bool event(QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
            letThrough.append(event->type());
            break;
        default:
            break;
        }
        return CommonDialog::event(event);
    }

    void closeEvent(QCloseEvent *event) override
    {
        ++closed;
        CommonDialog::closeEvent(event);
    }
};
