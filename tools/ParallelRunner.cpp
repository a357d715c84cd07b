#include "ParallelRunner.h"

#include <algorithm>

namespace tpcli {

unsigned WorkerCount(unsigned requested, size_t items)
{
    unsigned workers = requested ? requested : std::max(1u, std::thread::hardware_concurrency());
    return unsigned(std::min<size_t>(workers, items));
}

}  // namespace tpcli
