#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <sched.h>
#include <sys/mount.h>
#include <sys/statvfs.h>
#include <unistd.h>

/// A file system of a few pages in the place of the current folder, for as long as it lives. Nobody but the
/// test sees it.
class SmallFileSystem
{
public:
    /// Runs a test that mounts file systems. Where none may be mounted its initTestCase() has to skip, and
    /// the result is skippedResult, by which CTest counts it as skipped.
    static int run(QObject &test, int argc, char *argv[])
    {
        isPossible() = becomeAlone();
        const int failures = QTest::qExec(&test, argc, argv);
        return failures == 0 && !isPossible() ? skippedResult : failures;
    }
    static bool &isPossible()
    {
        static bool possible = false;
        return possible;
    }

    explicit SmallFileSystem(int pages)
    {
        const QByteArray size = "size=" + QByteArray::number(pages * pageSize());
        if (mount("tmpfs", qPrintable(m_folder), "tmpfs", 0, size.constData()) != 0)
            qFatal("no file system of %d pages", pages);
        QDir::setCurrent(m_folder);
    }
    ~SmallFileSystem()
    {
        QDir::setCurrent(QStringLiteral("/"));
        umount2(qPrintable(m_folder), MNT_DETACH);
        QDir::setCurrent(m_folder);
    }
    Q_DISABLE_COPY(SmallFileSystem)

    static int freePages()
    {
        struct statvfs status
        {
        };
        statvfs(".", &status);
        return int(status.f_bfree * status.f_bsize) / pageSize();
    }
    /// Fills it, with a file of that name, until so many pages are free.
    static void fill(const QString &fileName, int pagesLeft)
    {
        QFile file(fileName);
        const QByteArray content((freePages() - pagesLeft) * pageSize(), 'x');
        const bool isFilled = file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
        file.close();
        if (!isFilled || freePages() != pagesLeft)
            qFatal("%d pages are free instead of %d", freePages(), pagesLeft);
    }
    static int pageSize() { return int(sysconf(_SC_PAGESIZE)); }

private:
    static constexpr int skippedResult = 77;

    /// Leaves the mounted file systems of all others, as root or as one who is root for this process only.
    static bool becomeAlone()
    {
        const uid_t user = geteuid();
        const gid_t group = getegid();
        if (unshare(CLONE_NEWNS) != 0) {
            if (unshare(CLONE_NEWNS | CLONE_NEWUSER) != 0)
                return false;
            tell("/proc/self/setgroups", "deny");
            tell("/proc/self/uid_map", "0 " + QByteArray::number(user) + " 1");
            tell("/proc/self/gid_map", "0 " + QByteArray::number(group) + " 1");
        }
        const QTemporaryDir folder;
        return mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
            && mount("tmpfs", qPrintable(folder.path()), "tmpfs", 0, nullptr) == 0
            && umount(qPrintable(folder.path())) == 0;
    }
    static void tell(const char *fileName, const QByteArray &text)
    {
        QFile file(QString::fromLatin1(fileName));
        if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            file.write(text);
    }

    const QString m_folder = QDir::currentPath();
};
