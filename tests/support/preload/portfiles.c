/* Gives a process serial ports of its own, to be preloaded together with umockdev's library.
 *
 * The folder that $UMOCKDEV_DIR names holds the ports that the process sees. Device files of ports are led
 * there, so that a port of the real machine is never opened by accident. So are the lock files that stand for
 * opened ports: they bear the port's name and lie in a folder of the whole machine, and processes side by
 * side all have a "ttyUSB0". umockdev's library would lead device files as well, but asks a server
 * about each one that is opened; so they lie where it does not look.
 */
#undef _FORTIFY_SOURCE
#define _GNU_SOURCE
#include <dlfcn.h>
#include <fcntl.h>
#include <limits.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

typedef int (*Open)(const char *, int, ...);
typedef int (*Access)(const char *, int);
typedef int (*AccessAt)(int, const char *, int, int);
typedef int (*Stat)(const char *, struct stat *);
typedef int (*Unlink)(const char *);

static const char device_folder[] = "/dev";
static const char device_prefix[] = "/dev/tty";
static const char lock_file_prefix[] = "/LCK..";

static int is_port(const char *path)
{
    const size_t length = sizeof device_prefix - 1;
    return strncmp(path, device_prefix, length) == 0 && path[length] != '\0';
}

static const char *own_path(const char *path, char own[PATH_MAX])
{
    const char *root = getenv("UMOCKDEV_DIR");
    const char *lock_file = strstr(path, lock_file_prefix);
    if (!root || (!lock_file && !is_port(path)))
        return path;
    if (lock_file)
        snprintf(own, PATH_MAX, "%s/locks%s", root, lock_file);
    else
        snprintf(own, PATH_MAX, "%s/ports%s", root, path + sizeof device_folder - 1);
    return own;
}

/* Both names that callers are compiled to, after the size of their file offsets. */
#define LEAD_OPEN(name)                                                                                      \
    int name(const char *path, int flags, ...)                                                               \
    {                                                                                                        \
        const Open real = (Open)dlsym(RTLD_NEXT, #name);                                                     \
        char own[PATH_MAX];                                                                                  \
        va_list arguments;                                                                                   \
        va_start(arguments, flags);                                                                          \
        const mode_t mode = va_arg(arguments, mode_t);                                                       \
        va_end(arguments);                                                                                   \
        return real(own_path(path, own), flags, mode);                                                       \
    }

LEAD_OPEN(open)
LEAD_OPEN(open64)

int access(const char *path, int mode)
{
    const Access real = (Access)dlsym(RTLD_NEXT, "access");
    char own[PATH_MAX];
    return real(own_path(path, own), mode);
}

int faccessat(int folder, const char *path, int mode, int flags)
{
    const AccessAt real = (AccessAt)dlsym(RTLD_NEXT, "faccessat");
    char own[PATH_MAX];
    return real(folder, own_path(path, own), mode, flags);
}

int stat(const char *path, struct stat *out)
{
    const Stat real = (Stat)dlsym(RTLD_NEXT, "stat");
    char own[PATH_MAX];
    return real(own_path(path, own), out);
}

int unlink(const char *path)
{
    const Unlink real = (Unlink)dlsym(RTLD_NEXT, "unlink");
    char own[PATH_MAX];
    return real(own_path(path, own));
}
