#pragma once

#include <cstdint>

namespace lumo {

/// The sum of two byte or file counts. Stops the process when it does not fit: a size that wraps would be a
/// lie about what can be deleted.
std::int64_t checkedSum(std::int64_t left, std::int64_t right);

/// The sum of two lengths, or the largest number when it does not fit: what files claim to be long is
/// anybody's to choose, and no reason to stop.
std::int64_t saturatedSum(std::int64_t left, std::int64_t right);

/// The product, under the same rule.
std::int64_t checkedProduct(std::int64_t left, std::int64_t right);

} // namespace lumo
