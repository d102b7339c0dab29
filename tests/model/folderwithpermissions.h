#pragma once

#include <QtGlobal>

#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

/// Permissions of the current folder, under which even root acts as somebody who has to keep to them.
class FolderWithPermissions
{
public:
    explicit FolderWithPermissions(mode_t permissions)
    {
        if (chmod(".", permissions) != 0 || (m_isRoot && setresuid(nobody, nobody, 0) != 0))
            qFatal("the test cannot give up its rights");
    }
    ~FolderWithPermissions()
    {
        // A process that has changed its user may not be traced, which the search for leaks needs.
        const bool isBack = !m_isRoot || (setresuid(0, 0, 0) == 0 && prctl(PR_SET_DUMPABLE, 1) == 0);
        if (!isBack || chmod(".", 0700) != 0)
            qFatal("the test cannot take its rights back");
    }
    Q_DISABLE_COPY(FolderWithPermissions)

private:
    static constexpr uid_t nobody = 65534;
    const bool m_isRoot = geteuid() == 0;
};
