#pragma once

#include "LumoCore/Scanning/NamedTree.h"
#include "TarvoApp/App/Ground.h"

#include <QObject>
#include <QTimer>

#include <cstdint>
#include <memory>
#include <stop_token>
#include <string>
#include <vector>

namespace tarvo {

/// The home as a tree of names. It is measured when somebody first wants it, and follows what this
/// application changes on the disk.
class HomeTree final : public QObject {
    Q_OBJECT

  public:
    explicit HomeTree(const Ground& ground, QObject* parent = nullptr);
    /// Ends what goes on.
    ~HomeTree() override;

    /// Begins to measure, unless that was done.
    void want();
    /// Measures all of it once more. The tree stays as it is until that has ended, and is replaced then.
    void measureAgain();
    /// The disk was changed at these absolute paths: they are measured anew, or taken out when they are gone,
    /// and so is what is set aside.
    void lookAgainAt(const std::vector<std::string>& places);

    /// Null until somebody wants it; shared with the threads that fill it.
    [[nodiscard]] const std::shared_ptr<lumo::NamedTree>& tree() const { return tree_; }
    [[nodiscard]] bool isMeasuring() const { return walk_ != nullptr; }
    /// How many entries were found by the measuring that goes on.
    [[nodiscard]] std::int64_t foundCount() const;
    [[nodiscard]] std::int64_t unreadableCount() const { return unreadableCount_; }

  signals:
    /// The tree has more in it, or less; while it is measured, a few times a second.
    void changed();
    /// It is another one.
    void replaced();

  private:
    /// One measuring. Shared with its threads.
    struct Walk {
        std::shared_ptr<lumo::NamedTree> tree;
        lumo::platform::WalkProgress progress = {};
        std::stop_source stop = {};
    };

    void begin();
    void ended(const std::shared_ptr<Walk>& walk, std::int64_t unreadable);
    void tellChanged();

    Ground ground_;
    std::shared_ptr<lumo::NamedTree> tree_;
    std::shared_ptr<Walk> walk_; ///< None while nothing is measured.
    std::int64_t unreadableCount_ = 0;
    std::vector<std::string> changedMeanwhile_; ///< While it was measured.
    QTimer ticker_;
};

} // namespace tarvo
