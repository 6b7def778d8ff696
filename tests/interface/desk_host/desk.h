#pragma once

/* A user at a desk, for hosts in plain C: an application without a display, a database with a few records, users who
 * hold one right or all but one, and somebody who answers every screen that comes up. */

#ifdef __cplusplus
extern "C" {
#else
#include <stdbool.h>
#endif

/* What the user does with a screen. A screen that has nothing to choose is left. */
enum desk_answer { desk_escapes, desk_closes_the_box, desk_chooses };

void desk_open(void);
void desk_close(void);

/* Who is logged in now: a user with the right to open this part only, or one with that right on every other part. */
void desk_seat_user_with(int part);
void desk_seat_user_without(int part);

void desk_answer_screens_by(enum desk_answer answer);
/* The class of the last screen that came up since the last question; "" when none did. */
const char *desk_screen_shown(void);
/* Messages since the last question. */
int desk_messages(void);
/* Screens that are there now, shown or not. */
int desk_screens(void);
/* Whether a data module of this class lives. */
bool desk_data_module_lives(const char *name);
/* The process's resident memory, in kilobytes; under the address sanitizer, which keeps what was freed, what is
 * allocated. */
long desk_memory(void);

#ifdef __cplusplus
}
#endif
