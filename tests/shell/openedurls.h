#pragma once

#include <QDesktopServices>
#include <QObject>
#include <QUrl>

/// Takes the place of the system's programs for the addresses of one scheme, and notes what they are asked to
/// open.
class OpenedUrls : public QObject
{
    Q_OBJECT

public:
    explicit OpenedUrls(const QString &scheme)
        : m_scheme(scheme)
    {
        QDesktopServices::setUrlHandler(scheme, this, "open");
    }
    ~OpenedUrls() override { QDesktopServices::unsetUrlHandler(m_scheme); }

    QList<QUrl> urls;

public slots:
    void open(const QUrl &url) { urls.append(url); }

private:
    const QString m_scheme;
};
