#include "engine/io/processors.h"

#include <algorithm>
#include <thread>

#include <sched.h>

namespace vantoro {

namespace {

unsigned countProcessors()
{
    // The C++ library opens files of the system each time it is asked.
    cpu_set_t allowed;
    if (::sched_getaffinity(0, sizeof allowed, &allowed) == 0)
        return std::max(1U, static_cast<unsigned>(CPU_COUNT(&allowed)));
    return std::max(1U, std::thread::hardware_concurrency());
}

}

unsigned processorCount()
{
    static const auto count = countProcessors();
    return count;
}

}
