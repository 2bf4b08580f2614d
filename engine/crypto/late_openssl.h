#pragma once

// OpenSSL's library of ciphers and digests under its own names, loaded when one of them is called: it takes longer to
// start than a small archive takes to read. Within the namespace these names hide the library's.

#define OPENSSL_SUPPRESS_DEPRECATED // of the digests without a context, which the key derivations need

#include "engine/io/late_library.h"

#include <openssl/evp.h>
#include <openssl/sha.h>

namespace vantoro {

inline constinit LateLibrary opensslLibrary{VANTORO_LIBCRYPTO_SONAME};

// NOLINTBEGIN(bugprone-macro-parentheses): a name that is declared takes none
#define VANTORO_LATE(name)                                                                                             \
    inline constinit const LateFunction<decltype(::name)> name { opensslLibrary, #name }
// NOLINTEND(bugprone-macro-parentheses)
VANTORO_LATE(EVP_CIPHER_CTX_free);
VANTORO_LATE(EVP_CIPHER_CTX_new);
VANTORO_LATE(EVP_CIPHER_CTX_set_padding);
VANTORO_LATE(EVP_CIPHER_get_key_length);
VANTORO_LATE(EVP_DecryptInit_ex);
VANTORO_LATE(EVP_DecryptUpdate);
VANTORO_LATE(EVP_DigestFinal_ex);
VANTORO_LATE(EVP_DigestInit_ex);
VANTORO_LATE(EVP_DigestUpdate);
VANTORO_LATE(EVP_EncryptInit_ex);
VANTORO_LATE(EVP_EncryptUpdate);
VANTORO_LATE(EVP_MD_CTX_free);
VANTORO_LATE(EVP_MD_CTX_new);
VANTORO_LATE(EVP_aes_128_cbc);
VANTORO_LATE(EVP_aes_128_ecb);
VANTORO_LATE(EVP_aes_192_cbc);
VANTORO_LATE(EVP_aes_192_ecb);
VANTORO_LATE(EVP_aes_256_cbc);
VANTORO_LATE(EVP_aes_256_ecb);
VANTORO_LATE(EVP_sha256);
VANTORO_LATE(SHA1_Final);
VANTORO_LATE(SHA1_Init);
VANTORO_LATE(SHA1_Update);
VANTORO_LATE(SHA256);
VANTORO_LATE(SHA256_Final);
VANTORO_LATE(SHA256_Init);
VANTORO_LATE(SHA256_Update);
#undef VANTORO_LATE

}
