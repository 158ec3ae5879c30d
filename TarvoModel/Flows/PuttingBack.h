#pragma once

#include "TarvoModel/Flows/Desk.h"

#include <string>
#include <vector>

/// Putting back what cleanups set aside.
namespace tarvo {

/// What the last cleanup set aside that can still be put back; what nothing can be done about is told and
/// passed over.
lumo::Result<lumo::TrashOperationResult> undo(const Desk& desk);

/// What is to be put back, by the paths it had, as somebody wrote them, or by the ids of `HeldState`; with
/// neither, what the last cleanup set aside.
struct PutBackRequest {
    std::vector<std::string> originals = {};
    std::vector<std::string> ids = {};
};

/// The newest items from those paths. One from which nothing is held has its failure text.
lumo::Result<lumo::TrashOperationResult> restore(const PutBackRequest& request, const Desk& desk);

/// The items that the request means now, for a question; a failure names an id of nothing.
lumo::Result<std::vector<lumo::TrashedItem>> itemsMeant(const PutBackRequest& request, const Desk& desk);

/// The same as `restore` for items that were shown; when the request means others by now, nothing is done.
lumo::Result<lumo::TrashOperationResult>
restoreAgreed(const PutBackRequest& request, const std::vector<lumo::TrashedItem>& agreed, const Desk& desk);

} // namespace tarvo
