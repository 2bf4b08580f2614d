#pragma once

#include "engine/formats/format.h"

namespace vantoro::sevenzip {

// Disks, partition tables and file systems.

Match probeUdf(const ProbeInput& input);
Match probeIso(const ProbeInput& input);
Match probeDmg(const ProbeInput& input);
Match probeVhd(const ProbeInput& input);
Match probeVhdx(const ProbeInput& input);
Match probeVmdk(const ProbeInput& input);
Match probeVdi(const ProbeInput& input);
Match probeQcow(const ProbeInput& input);
Match probeSquashfs(const ProbeInput& input);
Match probeCramfs(const ProbeInput& input);
Match probeExt(const ProbeInput& input);
Match probeFat(const ProbeInput& input);
Match probeNtfs(const ProbeInput& input);
Match probeHfs(const ProbeInput& input);
Match probeApfs(const ProbeInput& input);
Match probeGpt(const ProbeInput& input);
Match probeApm(const ProbeInput& input);
Match probeMbr(const ProbeInput& input);

}
