#include <cstdio>
#include "app/Commands.h"

// The start-up order and the menu arrive with the application shell.
int runGui()
{
    std::fprintf(stderr, "velmora: the menu is not available yet\n");
    return 1;
}
