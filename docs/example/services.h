#pragma once

/* What a host has in place before it calls the module. The services themselves are C++; these few functions reach them
 * from C. */

#ifdef __cplusplus
extern "C" {
#else
#include <uchar.h>
#endif

/* The application, the database file (made when it is not there) and the user; in a database without users the first
 * administrator is made of them. 0: it failed, and said why on stderr. */
int services_start(const char *database, const char *user, const char *password_file);

/* Screens let the user pick a tax table, an earning, a deduction; their lists are the module's, so it is told here how
 * to reach them. */
void services_register_pickers(int (*tax_table)(void), int (*earning)(int, const char16_t *),
                               int (*deduction)(int, const char16_t *));

/* Before main returns: no screen, no query and no data module may outlive the application. */
void services_stop(void);

#ifdef __cplusplus
}
#endif
