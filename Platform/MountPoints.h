#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lumo::platform {

/// Where something is mounted on a folder, as far as it is worth asking: also a part of the same volume,
/// which its device number does not tell.
class MountPoints final {
  public:
    /// The mounts that this process sees now. Reads one file of the kernel.
    static MountPoints ofThisProcess();

    /// True when something is mounted under that name anywhere. Costs next to nothing.
    [[nodiscard]] bool areNamed(std::string_view name) const;

    /// True when the entry is the top of a mount; the path goes from the open folder. The system is asked
    /// only when something is mounted under the entry's name anywhere, so that the answer costs next to
    /// nothing. May be called from several threads at once.
    [[nodiscard]] bool isAt(int folder, const char* path) const;

  private:
    explicit MountPoints(std::vector<std::string> names) : names_(std::move(names)) {}

    std::vector<std::string> names_; ///< Last components, ascending.
};

} // namespace lumo::platform
