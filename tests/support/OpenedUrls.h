#pragma once

#include <QList>
#include <QObject>
#include <QUrl>

/// Records the "file" URLs that the program opens, instead of opening them.
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
