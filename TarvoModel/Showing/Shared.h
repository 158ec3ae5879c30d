#pragma once

#include <compare>
#include <cstddef>
#include <initializer_list>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Values that nobody changes any more. Rows are copied whenever something is shown otherwise, there may be
/// thousands of them, and one may stand for thousands of places: all copies share these, so that one costs
/// next to nothing.
namespace tarvo {

/// A text, used as a `std::string` that cannot be changed.
class SharedText final {
  public:
    SharedText() = default;
    // NOLINTBEGIN(google-explicit-constructor): it stands for the text.
    SharedText(std::string text) {
        if (!text.empty()) {
            text_ = std::make_shared<const std::string>(std::move(text));
        }
    }
    SharedText(const char* text) : SharedText(std::string(text)) {}
    SharedText(std::string_view text) : SharedText(std::string(text)) {}

    operator const std::string&() const { return text(); }
    operator std::string_view() const { return text(); }
    // NOLINTEND(google-explicit-constructor)

    [[nodiscard]] const std::string& text() const {
        static const std::string none;
        return text_ ? *text_ : none;
    }
    [[nodiscard]] bool empty() const { return !text_; }

    friend bool operator==(const SharedText& one, const SharedText& other) {
        return one.text_ == other.text_ || one.text() == other.text();
    }
    friend bool operator==(const SharedText& one, std::string_view other) { return one.text() == other; }
    friend bool operator==(const SharedText& one, const std::string& other) { return one.text() == other; }
    friend bool operator==(const SharedText& one, const char* other) { return one.text() == other; }
    friend std::string operator+(const SharedText& one, std::string_view other) {
        return one.text() + std::string(other);
    }
    friend std::ostream& operator<<(std::ostream& out, const SharedText& text) { return out << text.text(); }

  private:
    std::shared_ptr<const std::string> text_; ///< Null for none.
};

/// Absolute paths, used as a list that cannot be changed.
class SharedPaths final {
  public:
    using List = std::vector<std::string>;
    using value_type = List::value_type;
    using const_iterator = List::const_iterator;

    SharedPaths() = default;
    // NOLINTBEGIN(google-explicit-constructor): it stands for the list.
    SharedPaths(List paths) {
        if (!paths.empty()) {
            paths_ = std::make_shared<const List>(std::move(paths));
        }
    }
    SharedPaths(std::initializer_list<std::string> paths) : SharedPaths(List(paths)) {}

    operator const List&() const { return list(); }
    // NOLINTEND(google-explicit-constructor)

    [[nodiscard]] const List& list() const {
        static const List none;
        return paths_ ? *paths_ : none;
    }
    [[nodiscard]] bool empty() const { return !paths_; }
    [[nodiscard]] std::size_t size() const { return list().size(); }
    [[nodiscard]] const std::string& front() const { return list().front(); }
    [[nodiscard]] const_iterator begin() const { return list().begin(); }
    [[nodiscard]] const_iterator end() const { return list().end(); }

    friend bool operator==(const SharedPaths& one, const SharedPaths& other) {
        return one.paths_ == other.paths_ || one.list() == other.list();
    }
    friend std::strong_ordering operator<=>(const SharedPaths& one, const SharedPaths& other) {
        return one.paths_ == other.paths_ ? std::strong_ordering::equal : one.list() <=> other.list();
    }

  private:
    std::shared_ptr<const List> paths_; ///< Null for none.
};

} // namespace tarvo
