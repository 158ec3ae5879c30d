#pragma once

#include "TarvoModel/Showing/Rows.h"

#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tarvo {

/// Rows that nobody changes any more, found by their ids without a search: a look at installers alone may
/// have found thousands, and each tile asks for its row again and again. Shared, never copied.
class RowIndex final {
  public:
    explicit RowIndex(std::vector<Row> rows = {}) : rows_(std::move(rows)) {
        byID_.reserve(rows_.size());
        for (const Row& row : rows_) {
            byID_.emplace(row.id, &row);
        }
    }
    RowIndex(const RowIndex&) = delete;
    RowIndex& operator=(const RowIndex&) = delete;

    [[nodiscard]] const std::vector<Row>& rows() const { return rows_; }
    /// Null where there is none.
    [[nodiscard]] const Row* find(std::string_view id) const {
        const auto found = byID_.find(id);
        return found == byID_.end() ? nullptr : found->second;
    }

  private:
    std::vector<Row> rows_;
    std::unordered_map<std::string_view, const Row*> byID_; ///< Into the rows.
};

} // namespace tarvo
