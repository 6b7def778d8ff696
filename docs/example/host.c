/* A host program in C. It logs a user in, loads the payroll module by its path, shows the tax tables, and lets the user
 * choose a tax table and an earning:
 *
 *     host MODULE DATABASE USER PASSWORD-FILE
 */

#include "Ketebionpap_Interface.h"
#include "services.h"

#include <dlfcn.h>
#include <stdio.h>
#include <string.h>

/* Finds an entry by its name. The copy makes a function pointer of what dlsym gives; a cast may not. */
static int find(void *module, const char *name, void *entry)
{
    void *found = dlsym(module, name);
    if (found)
        memcpy(entry, &found, sizeof found);
    else
        fprintf(stderr, "%s\n", dlerror());
    return found != NULL;
}

int main(int argc, char **argv)
{
    void (*open_tax_tables)(void);
    int (*select_tax_table)(void);
    int (*select_earning)(int, const char16_t *);
    int (*select_deduction)(int, const char16_t *);
    int result = 1;

    if (argc != 5) {
        fprintf(stderr, "usage: host MODULE DATABASE USER PASSWORD-FILE\n");
        return 2;
    }
    if (!services_start(argv[2], argv[3], argv[4]))
        return 1;

    /* The module stays loaded until the process ends: two of its data modules live on between calls. */
    void *module = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (!module) {
        fprintf(stderr, "%s\n", dlerror());
    } else if (find(module, "Open_TaxList", &open_tax_tables) &&
               find(module, "Select_TaxInfo", &select_tax_table) &&
               find(module, "Select_FiscalList", &select_earning) &&
               find(module, "Select_DeductionList", &select_deduction)) {
        services_register_pickers(select_tax_table, select_earning, select_deduction);
        open_tax_tables();
        printf("tax table %d\n", select_tax_table());
        printf("earning %d\n", select_earning(1, u""));
        result = 0;
    }
    services_stop();
    return result;
}
