#pragma once

#include "LumoCore/Inventories/DetailItem.h"

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

/// What the detectors of the single programs share.
namespace lumo::Models {

/// One look at what programs have stored.
struct Look {
    const InventoryQuery& query;
    Inventory& inventory;
    /// The ids of the models that go together, and nothing else is looked at; absent where all are looked
    /// for, each as if it went alone.
    const std::set<std::string>* together = nullptr;

    [[nodiscard]] bool goes(const std::string& id) const {
        return together != nullptr && together->contains(id);
    }
};

/// A model in some program's store.
struct StoredModel {
    std::string program;                 ///< As ids have it: "ollama".
    std::string name;                    ///< In the store, unique there.
    std::string shown;                   ///< For a person.
    std::string detail = {};             ///< Besides what the main file says.
    std::vector<std::string> paths;      ///< What goes, in this order.
    std::string mainFile = {};           ///< Whose header and times tell the rest; may be empty.
    std::vector<std::string> apart = {}; ///< Of the paths, what counts as an item of its own.
    std::int64_t bytesThatStay = 0;      ///< Of what the paths take: what has other names elsewhere.
};

/// The id of the model of that name in a program's store.
std::string idOf(std::string_view program, std::string_view name);

/// Adds what the model comes to: what its paths take, what its main file says of itself, and when it was used
/// last; where it takes something and the look is for it. The item, which stays there until the next is
/// added; null when there is none.
DetailItem* add(StoredModel model, const Look& look);

/// What Ollama has stored below the home, or for all users; in the order in which it may go.
void findInOllama(const Look& look);

/// What Hugging Face's programs have stored in that folder ("hub"); in the order in which it may go.
void findInHuggingFace(const std::string& hub, const Look& look);

/// The largest file of a folder's tree that may have a header; empty when there is none.
std::string mainFileIn(const std::string& folder, int depth = 0);

} // namespace lumo::Models
