#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>

/// Sums of byte and file counts.
namespace lumo {

[[noreturn]] inline void stopOnOverflow() {
    std::fputs("tarvo: a count of bytes does not fit in 64 bits\n", stderr);
    std::abort();
}

/// The sum of two byte or file counts. Stops the process when it does not fit: a size that wraps would be a
/// lie about what can be deleted.
inline std::int64_t checkedSum(std::int64_t left, std::int64_t right) {
    std::int64_t sum = 0;
    if (__builtin_add_overflow(left, right, &sum)) {
        stopOnOverflow();
    }
    return sum;
}

/// The sum of two lengths, or the largest number when it does not fit: what files claim to be long is
/// anybody's to choose, and no reason to stop.
inline std::int64_t saturatedSum(std::int64_t left, std::int64_t right) {
    std::int64_t sum = 0;
    return __builtin_add_overflow(left, right, &sum) ? std::numeric_limits<std::int64_t>::max() : sum;
}

/// The product, under the same rule as the first.
inline std::int64_t checkedProduct(std::int64_t left, std::int64_t right) {
    std::int64_t product = 0;
    if (__builtin_mul_overflow(left, right, &product)) {
        stopOnOverflow();
    }
    return product;
}

} // namespace lumo
