#include "Platform/ShellPattern.h"

#include <fnmatch.h>
#include <locale.h>

namespace lumo::platform {

namespace {

/// fnmatch takes a character to be what the thread's locale says; ours is UTF-8 whatever the user's is.
class Utf8Locale final {
  public:
    Utf8Locale() : previous_(uselocale(utf8())) {}
    ~Utf8Locale() { uselocale(previous_); }
    Utf8Locale(const Utf8Locale&) = delete;
    Utf8Locale& operator=(const Utf8Locale&) = delete;

  private:
    static locale_t utf8() {
        static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
        return locale; // None where the system lacks it: then the thread's locale stays.
    }

    locale_t previous_;
};

} // namespace

bool matchesShellPattern(const std::string& name, const std::string& pattern) {
    const Utf8Locale locale;
    return fnmatch(pattern.c_str(), name.c_str(), 0) == 0;
}

} // namespace lumo::platform
