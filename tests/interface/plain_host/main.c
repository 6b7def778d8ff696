/* A host that is nothing but C: it loads the module by its path, finds every entry by name and calls it. Without an
 * application there is nothing to show a screen on, so each call does nothing and answers 0. */

#include "interface/calls.h"

#include <stdio.h>

int main(int argc, char **argv)
{
    void *module = argc > 1 ? load_module(argv[1]) : NULL;
    if (!module)
        return 1;
    for (int i = 2; i < argc; ++i)
        printf("%s %d\n", argv[i], call_entry(module, argv[i], 0, 1, NULL));
    return 0;
}
