/* A plug-in library as 7-Zip made them before 23.01: it does not say which layout its tables have. */
#include <stddef.h>

__attribute__((visibility("default"))) int CreateObject(const void* class_id, const void* interface_id, void** out)
{
    (void)class_id;
    (void)interface_id;
    *out = NULL;
    return 1;
}
