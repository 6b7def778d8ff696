#include "host/Utility_ZLM/Sha256.h"

#include <array>
#include <sodium.h>

QString Sha256::hex(QByteArrayView bytes)
{
    std::array<unsigned char, crypto_hash_sha256_BYTES> hash;
    crypto_hash_sha256(hash.data(), reinterpret_cast<const unsigned char *>(bytes.data()),
                       static_cast<unsigned long long>(bytes.size()));
    std::array<char, 2 * crypto_hash_sha256_BYTES + 1> digits;
    sodium_bin2hex(digits.data(), digits.size(), hash.data(), hash.size());
    return QString::fromLatin1(digits.data(), qsizetype(digits.size()) - 1);
}
