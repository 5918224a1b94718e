/* The public header compiles alone as strict C. */
#include "varnel4/hla2.h"

int main(void)
{
    HLA2AcquireFunction acquire = 0;
    HLA2Host host = {0};
    (void)acquire;
    (void)host;
    return HLA2_INTERFACE_VERSION == 6 ? 0 : 1;
}
