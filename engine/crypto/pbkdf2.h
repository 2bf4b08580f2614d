#pragma once

#include "engine/crypto/sha1.h"

namespace vantoro {

/// PBKDF2 with HMAC-SHA-1 (RFC 2898). Fills `out`, whose first byte is number `skip` of the derived key; only the
/// 20-byte blocks that it touches are computed, up to four of them side by side.
void pbkdf2Sha1(ConstBytes password, ConstBytes salt, unsigned rounds, Bytes out, std::size_t skip = 0,
                Sha1Engine engine = bestSha1Engine());

}
