#pragma once

#include <cstdint>

namespace tarvo::bench {

/// The splitmix64 generator. Everything is derived from `next` with integers only: the distributions of the
/// standard library differ between its implementations, and a home has to come out the same everywhere.
class SplitMix final {
  public:
    explicit SplitMix(std::uint64_t seed) : state_(seed) {}

    std::uint64_t next() {
        state_ += 0x9e3779b97f4a7c15U;
        std::uint64_t mixed = state_;
        mixed = (mixed ^ (mixed >> 30U)) * 0xbf58476d1ce4e5b9U;
        mixed = (mixed ^ (mixed >> 27U)) * 0x94d049bb133111ebU;
        return mixed ^ (mixed >> 31U);
    }

    /// A number from 0 to `bound` - 1. The bias of the remainder is far below what a benchmark notices.
    std::int64_t below(std::int64_t bound) {
        return static_cast<std::int64_t>(next() % static_cast<std::uint64_t>(bound));
    }

    /// A number from `low` to `high`, both included.
    std::int64_t between(std::int64_t low, std::int64_t high) { return low + below(high - low + 1); }

    bool chance(std::int64_t perThousand) { return below(1000) < perThousand; }

  private:
    std::uint64_t state_;
};

} // namespace tarvo::bench
