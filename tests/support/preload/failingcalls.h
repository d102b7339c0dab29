#pragma once

#ifdef __cplusplus
extern "C" {
#endif

enum z7_failure {
    Z7_FAILS_ONCE,
    Z7_FAILS_FROM_THEN_ON,
    Z7_FAILS_HALF_WAY, /* a write that takes half of its data; from then on nothing */
};

/* After so many successful ones, `call` ("write", "fsync" or "rename") fails; null for none. */
void z7_fail_calls(const char *call, int before, enum z7_failure failure);

/* How often a call has failed since. */
int z7_failures(void);

#ifdef __cplusplus
}
#endif
