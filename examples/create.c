/* create.c - the process that creates the region, once for the node, before any other attaches. */
#include <stdio.h>
#include <swct/swct.h>

int main(void)
{
    Swct_Init();
    if (!Swct_IsAttachedForWriting()) {
        fprintf(stderr, "create: no region; the line above says why\n");
        return 1;
    }
    printf("region created, MAC ageing after %u s\n", Swct_GetAgeingTime());
    return 0;
}
