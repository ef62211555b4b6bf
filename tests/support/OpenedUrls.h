#pragma once

#include <QList>
#include <QObject>
#include <QUrl>

/// Keeps the "file" addresses that the program wants the desktop to open, instead of opening them.
class OpenedUrls : public QObject
{
    Q_OBJECT

public:
    OpenedUrls();
    ~OpenedUrls() override;

    QList<QUrl> opened;

public slots:
    void open(const QUrl &url);
};
