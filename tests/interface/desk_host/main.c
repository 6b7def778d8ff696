/* A host in plain C at work: it loads the module by its path and calls the fourteen entries by name, in changing order,
 * refused and granted, cancelled and chosen, and looks after each call at the answer, at the screen that came up and at
 * the data modules that live on.
 *
 *     desk_host MODULE CALLS EVERY      every how manieth call (1: each) is granted; the others are refused
 */

#include "interface/calls.h"
#include "interface/desk_host/desk.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

struct entry {
    const char *name;
    int part;           /* whose right to open it asks for; 0 where none is asked */
    const char *screen; /* what comes up */
    int chosen;         /* the answer after a choice */
    int kind;
    int select_type;
    const char16_t *filter;
};

static const struct entry entries[] = {
    {"Open_PayRollInfo", 801, "TPayrollInfoGet_FRM", 0, 0, 0, NULL},
    {"Open_TaxList", 802, "TTaxList_FRM", 0, 0, 0, NULL},
    {"Open_WorkCalender", 803, "TCalender_List_FRM", 0, 0, 0, NULL},
    {"Open_FiscalList", 804, "TFiscalDeducation_List_FRM", 0, 0, 0, NULL},
    {"Open_DeductionList", 805, "TFiscalDeducation_List_FRM", 0, 0, 0, NULL},
    {"Open_CalculatingMethods", 813, "TCalcMethodList_FRM", 0, 0, 0, NULL},
    {"Open_StaffList", 806, "TStaffList_FRM", 0, 0, 0, NULL},
    {"Select_StaffGroup", 0, "TGroupList_FRM", 2, 0, 0, NULL},
    {"Select_Staff", 806, "TStaffList_FRM", 12, 0, 0, NULL},
    {"Select_CalculatingMethods", 813, "TCalcMethodList_FRM", 8, 0, 0, NULL},
    {"Select_TaxInfo", 802, "TTaxList_FRM", 4, 0, 0, NULL},
    {"Select_FiscalList", 804, "TFiscalDeducation_List_FRM", 22, 0, 1, u""},
    {"Select_DeductionList", 804, "TFiscalDeducation_List_FRM", 32, 0, 4, NULL},
    {"Select_FiscalDeducation", 804, "TFiscalDeducation_List_FRM", 32, 1, 5, u"0"},
};
enum { entry_count = sizeof entries / sizeof entries[0] };

static const char *const data_modules[] = {"TPayrollInfo_DM", "TCalcMethod_DM", "TTax_DM",
                                           "TCalender_DM",    "TStaff_DM",      "TEntity_DM"};

static int faults;

static void expect(int held, const char *entry, const char *what)
{
    if (!held && ++faults <= 20)
        fprintf(stderr, "%s: %s\n", entry, what);
}

/* The same order on every machine. */
static unsigned next_number(void)
{
    static unsigned state = 1404;
    state = state * 1103515245u + 12345u;
    return state >> 16;
}

/* The payroll settings keep their data module; a refused opening of the methods leaves one for the next granted call. */
static int payroll_settings_live, methods_live;

static void call(void *module, const struct entry *entry, int granted, enum desk_answer answer)
{
    if (granted)
        desk_seat_user_with(entry->part);
    else
        desk_seat_user_without(entry->part);
    desk_answer_screens_by(answer);
    const int shown = granted || entry->part == 0;
    const int result = call_entry(module, entry->name, entry->kind, entry->select_type, entry->filter);

    if (strcmp(entry->name, "Open_PayRollInfo") == 0)
        payroll_settings_live = 1;
    if (strcmp(entry->name, "Open_CalculatingMethods") == 0)
        methods_live = !granted;
    else if (strcmp(entry->name, "Select_CalculatingMethods") == 0 && granted)
        methods_live = 0;

    expect(result == (shown && answer == desk_chooses ? entry->chosen : 0), entry->name, "a wrong answer");
    expect(strcmp(desk_screen_shown(), shown ? entry->screen : "") == 0, entry->name, "a wrong screen");
    expect(desk_messages() == !shown, entry->name, "the host tells about a right that is refused, once");
    expect(desk_screens() == 0, entry->name, "a screen is left");
    for (size_t i = 0; i < sizeof data_modules / sizeof data_modules[0]; ++i) {
        const int lives = i == 0 ? payroll_settings_live : i == 1 ? methods_live : 0;
        expect(desk_data_module_lives(data_modules[i]) == lives, entry->name, data_modules[i]);
    }
}

int main(int argc, char **argv)
{
    void *module = argc == 4 ? load_module(argv[1]) : NULL;
    if (!module)
        return 2;
    const int calls = atoi(argv[2]), every = atoi(argv[3]);
    desk_open();

    /* Each entry in each way, twice, in the order of the table; the way changes faster than the entry. */
    for (int i = 0; i < 2 * entry_count; ++i) {
        const struct entry *entry = &entries[i % entry_count];
        call(module, entry, 0, desk_escapes);
        call(module, entry, 1, desk_escapes);
        call(module, entry, 1, desk_closes_the_box);
        call(module, entry, 1, desk_chooses);
        call(module, entry, 0, desk_chooses);
    }
    int granted_calls = 0;
    long before = 0;
    /* The first calls fill the caches of fonts, styles and statements. */
    const int warm = calls / 10;
    for (int i = 0; i < warm + calls; ++i) {
        if (i == warm) {
            before = desk_memory();
            granted_calls = 0;
        }
        const unsigned number = next_number();
        const int granted = number % (unsigned)every == 0;
        const struct entry *entry = &entries[next_number() % entry_count];
        /* One that asks for no right is shown however it is called. */
        if (!granted && entry->part == 0)
            entry = &entries[next_number() % 7];
        granted_calls += granted;
        call(module, entry, granted, (enum desk_answer)(next_number() % 3));
    }
    const long grown = desk_memory() - before;
    printf("%d calls, %d of them granted, %ld kB more\n", calls, granted_calls, grown);
    expect(grown < 1024, "the calls", "they leave memory behind");
    desk_close();
    return faults != 0;
}
