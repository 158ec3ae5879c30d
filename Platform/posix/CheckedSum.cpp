#include "Platform/CheckedSum.h"

#include <cstdio>
#include <cstdlib>
#include <limits>

namespace lumo {

namespace {

[[noreturn]] void stopOnOverflow() {
    std::fputs("tarvo: a count of bytes does not fit in 64 bits\n", stderr);
    std::abort();
}

} // namespace

std::int64_t checkedSum(std::int64_t left, std::int64_t right) {
    std::int64_t sum = 0;
    if (__builtin_add_overflow(left, right, &sum)) {
        stopOnOverflow();
    }
    return sum;
}

std::int64_t saturatedSum(std::int64_t left, std::int64_t right) {
    std::int64_t sum = 0;
    return __builtin_add_overflow(left, right, &sum) ? std::numeric_limits<std::int64_t>::max() : sum;
}

std::int64_t checkedProduct(std::int64_t left, std::int64_t right) {
    std::int64_t product = 0;
    if (__builtin_mul_overflow(left, right, &product)) {
        stopOnOverflow();
    }
    return product;
}

} // namespace lumo
