#pragma once

#include <utility>

namespace lumo::platform {

/// An open file descriptor, closed with its owner.
class Descriptor final {
  public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor();
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept;
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    [[nodiscard]] int number() const { return number_; }
    [[nodiscard]] bool isOpen() const { return number_ >= 0; }
    /// Gives the descriptor away; whoever takes it closes it.
    [[nodiscard]] int release() { return std::exchange(number_, -1); }

  private:
    int number_ = -1;
};

} // namespace lumo::platform
