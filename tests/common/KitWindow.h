#pragma once

#include "CommonDialog.h"
#include "CommonTitleBar.h"
#include "WorkingFolder.h"

#include <QCloseEvent>
#include <QEvent>
#include <QVBoxLayout>

/// Comes before a window's base class, so that the window does not find the skin.
struct WithoutSkin
{
    WorkingFolder folder;
};

/// A window as the program's forms build them: a CommonDialog with the title bar on top, in Qt's
/// own look. It notes which mouse events the title bar let through.
class KitWindow : private WithoutSkin, public CommonDialog
{
public:
    /// @p margin lies between the window's edges and the bar, as wide as a form wants it.
    explicit KitWindow(bool byEdges = false, int margin = 0)
        : CommonDialog(nullptr, byEdges, false)
        , bar(new CommonTitleBar(this))
    {
        // The machine's own font may be so wide that the bar needs more room than it gets here.
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

    /// Where on the screen @p inBar lies.
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
