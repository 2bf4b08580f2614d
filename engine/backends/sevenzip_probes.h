#pragma once

#include "engine/formats/format.h"

namespace vantoro::sevenzip {

// Own recognition of the formats that the plug-in library reads: each signature at its place, with what of the first
// header can be checked. The library itself is never asked what a file might be.

Match probe7z(const ProbeInput& input);
Match probeCab(const ProbeInput& input);
Match probeChm(const ProbeInput& input);
Match probeHxs(const ProbeInput& input);
Match probeMsi(const ProbeInput& input);
Match probeCompound(const ProbeInput& input);
Match probeWim(const ProbeInput& input);
Match probeNsis(const ProbeInput& input);
Match probeXar(const ProbeInput& input);
Match probeZip(const ProbeInput& input);
Match probeLzh(const ProbeInput& input);

/// Where a 7z or cab archive starts behind a program; nothing when there is none in the first MiBs.
std::optional<std::uint64_t> find7zInStub(const ByteSource& source);
std::optional<std::uint64_t> findCabInStub(const ByteSource& source);
/// Where the file system of an AppImage starts.
std::optional<std::uint64_t> findSquashfsInStub(const ByteSource& source);

}
