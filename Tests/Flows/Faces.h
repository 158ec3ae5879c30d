#pragma once

#include "Tests/App/AppStory.h"
#include "Tests/support/TempHome.h"

#include <functional>
#include <memory>
#include <string>

namespace tarvo::testing {

/// One face of the product on one home: a person who cleans with it and takes it back. What it answers is
/// what that person is told in the end.
class Face {
  public:
    explicit Face(std::string home) : home_(std::move(home)) {}
    virtual ~Face() = default;
    Face(const Face&) = delete;
    Face& operator=(const Face&) = delete;

    /// Cleans what recreates itself and the models of `whisper`, once `whileAsking` has happened between the
    /// question and a yes.
    virtual std::string clean(const std::function<void()>& whileAsking) = 0;
    virtual std::string undo() = 0;

  protected:
    std::string home_; ///< As it is spelt to this face.
};

enum class FaceKind { command, window, toolServer };

std::unique_ptr<Face> faceOf(FaceKind kind, const std::string& home);

} // namespace tarvo::testing
