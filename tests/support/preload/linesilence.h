#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/* Tells whether no byte will come out of the pseudo terminal of that path until something is written to it.
 * May be called on any thread. */
typedef int (*z7_line_is_silent)(const char *path);

/* From now on a wait for bytes of a pseudo terminal ends as soon as none can come; null for the usual waits.
 */
void z7_skip_silence(z7_line_is_silent is_silent);

#ifdef __cplusplus
}
#endif
