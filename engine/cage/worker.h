#pragma once

#include "engine/cage/channel.h"
#include "engine/cage/shared_area.h"

namespace vantoro::cage {

/// How the worker opens what it is given: the registry's openSource().
using Opener = Result<ArchivePtr> (*)(const SourcePtr& source, const OpenContext& context);

/// Serves one parent over the descriptors of worker_process.h until it goes away; called after confinement, whose steps
/// it reports. Returns the process's exit status.
int serve(Opener open, std::uint32_t confinement, const Limits& limits = {});

}
