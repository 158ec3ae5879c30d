#include "Platform/Signing.h"

#include <nettle/hmac.h>
#include <nettle/memops.h>
#include <nettle/sha2.h>
#include <sys/random.h>

#include <cstdlib>

namespace lumo::platform {

namespace {

const std::uint8_t* bytesOf(std::string_view text) {
    return reinterpret_cast<const std::uint8_t*>(text.data());
}

std::string inDigits(const std::array<std::uint8_t, SHA256_DIGEST_SIZE>& digest) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const std::uint8_t byte : digest) {
        text += digits[byte >> 4U];
        text += digits[byte & 0xFU];
    }
    return text;
}

} // namespace

std::array<std::uint8_t, 32> randomKey() {
    std::array<std::uint8_t, 32> key = {};
    if (getentropy(key.data(), key.size()) != 0) {
        std::abort();
    }
    return key;
}

std::string digestOf(std::string_view bytes) {
    sha256_ctx context;
    sha256_init(&context);
    sha256_update(&context, bytes.size(), bytesOf(bytes));
    std::array<std::uint8_t, SHA256_DIGEST_SIZE> digest = {};
    sha256_digest(&context, digest.size(), digest.data());
    return inDigits(digest);
}

std::string signatureOf(std::string_view bytes, const std::array<std::uint8_t, 32>& key) {
    hmac_sha256_ctx context;
    hmac_sha256_set_key(&context, key.size(), key.data());
    hmac_sha256_update(&context, bytes.size(), bytesOf(bytes));
    std::array<std::uint8_t, SHA256_DIGEST_SIZE> digest = {};
    hmac_sha256_digest(&context, digest.size(), digest.data());
    return inDigits(digest);
}

bool isSameSecret(std::string_view left, std::string_view right) {
    return left.size() == right.size() && memeql_sec(left.data(), right.data(), left.size()) != 0;
}

} // namespace lumo::platform
