/* Lets a program set parity on a pseudo terminal, to be loaded with LD_PRELOAD.
 *
 * The kernel drops the parity flags of a pseudo terminal, and tcsetattr then reports EINVAL because
 * the settings did not come out as asked. There is no line on which a parity bit could travel, so the
 * flags are taken out before the call. Other devices get their settings untouched.
 */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <termios.h>

enum { FirstSlaveMajor = 136, LastSlaveMajor = 143 };

typedef int (*SetAttributes)(int, int, const struct termios *);

static int is_pseudo_terminal(int fd)
{
    struct stat status;
    if (fstat(fd, &status) != 0 || !S_ISCHR(status.st_mode))
        return 0;
    return major(status.st_rdev) >= FirstSlaveMajor && major(status.st_rdev) <= LastSlaveMajor;
}

int tcsetattr(int fd, int actions, const struct termios *settings)
{
    const SetAttributes real = (SetAttributes)dlsym(RTLD_NEXT, "tcsetattr");
    if (!real) {
        errno = ENOSYS;
        return -1;
    }
    if (!is_pseudo_terminal(fd))
        return real(fd, actions, settings);
    struct termios without_parity = *settings;
    without_parity.c_cflag &= ~(tcflag_t)(PARENB | PARODD);
    return real(fd, actions, &without_parity);
}
