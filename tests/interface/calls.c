#include "interface/calls.h"

#include "Ketebionpap_Interface.h"

#include <dlfcn.h>
#include <stdio.h>
#include <string.h>

void *load_module(const char *path)
{
    void *module = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (!module)
        fprintf(stderr, "%s\n", dlerror());
    return module;
}

int has_entry(void *module, const char *name)
{
    return dlsym(module, name) != NULL;
}

int call_entry(void *module, const char *name, int kind, int select_type, const char16_t *filter)
{
    /* The pointers have the types of the header's functions; each comes from the loaded library all the same. */
    __typeof__(Open_TaxList) *open = NULL;
    __typeof__(Select_Staff) *select = NULL;
    __typeof__(Select_FiscalList) *select_filtered = NULL;
    __typeof__(Select_FiscalDeducation) *select_kind = NULL;
    void *entry = dlsym(module, name);
    if (!entry)
        return -1;
    if (strcmp(name, "Select_FiscalDeducation") == 0) {
        memcpy(&select_kind, &entry, sizeof entry);
        return select_kind(kind, select_type, filter);
    }
    if (strcmp(name, "Select_FiscalList") == 0 || strcmp(name, "Select_DeductionList") == 0) {
        memcpy(&select_filtered, &entry, sizeof entry);
        return select_filtered(select_type, filter);
    }
    if (strncmp(name, "Select_", 7) == 0) {
        memcpy(&select, &entry, sizeof entry);
        return select();
    }
    memcpy(&open, &entry, sizeof entry);
    open();
    return 0;
}
