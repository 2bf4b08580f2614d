#include "engine/io/batch_thread.h"

#include <sched.h>

namespace vantoro {

void becomeBatchThread()
{
    const sched_param none{};
    if (::sched_getscheduler(0) == SCHED_OTHER)
        (void)::sched_setscheduler(0, SCHED_BATCH, &none); // a wish
}

}
