#pragma once

/* What a host written in C does with the module: entries found by name in a library that it loaded, and called. */

#ifdef __cplusplus
extern "C" {
#else
#include <uchar.h>
#endif

/* The library at this path; null, and a line on standard error, when it cannot be loaded. */
void *load_module(const char *path);
/* 1 when the library has the entry. */
int has_entry(void *module, const char *name);
/* Calls one of the fourteen by its name, with as many of the arguments as it takes. Answers its result, 0 for an
 * Open_ entry, -1 for a name that is none of them. */
int call_entry(void *module, const char *name, int kind, int select_type, const char16_t *filter);

#ifdef __cplusplus
}
#endif
