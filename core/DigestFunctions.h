#pragma once

// The digests of libcrypto, loaded with the first one. A function of it that is called stands in
// this list.

#include <openssl/evp.h>

#include "core/SharedLibrary.h"

#define EVP_Digest ZOLMARA_FUNCTION_OF(CryptoLibrary, EVP_Digest)
#define EVP_DigestFinal_ex ZOLMARA_FUNCTION_OF(CryptoLibrary, EVP_DigestFinal_ex)
#define EVP_DigestInit_ex ZOLMARA_FUNCTION_OF(CryptoLibrary, EVP_DigestInit_ex)
#define EVP_DigestUpdate ZOLMARA_FUNCTION_OF(CryptoLibrary, EVP_DigestUpdate)
#define EVP_MD_CTX_copy_ex ZOLMARA_FUNCTION_OF(CryptoLibrary, EVP_MD_CTX_copy_ex)
#define EVP_MD_CTX_free ZOLMARA_FUNCTION_OF(CryptoLibrary, EVP_MD_CTX_free)
#define EVP_MD_CTX_new ZOLMARA_FUNCTION_OF(CryptoLibrary, EVP_MD_CTX_new)
#define EVP_sha256 ZOLMARA_FUNCTION_OF(CryptoLibrary, EVP_sha256)
