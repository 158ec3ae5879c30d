#pragma once

#include "LumoCore/Inventories/DetailItem.h"

#include <string>
#include <string_view>
#include <vector>

/// What the detectors of the single programs share.
namespace lumo::Models {

/// A model in some program's store.
struct StoredModel {
    std::string program;            ///< As ids have it: "ollama".
    std::string name;               ///< In the store, unique there.
    std::string shown;              ///< For a person.
    std::string detail = {};        ///< Besides what the main file says.
    std::vector<std::string> paths; ///< What goes, in this order.
    std::string mainFile = {};      ///< Whose header and times tell the rest; may be empty.
};

/// The item: what the paths take, what the main file says of itself, and when it was used last.
DetailItem itemOf(StoredModel model, std::int64_t bytes, const InventoryQuery& query);

/// When the model was opened last, or else changed; absent when neither is known.
std::optional<Date> lastUseOf(const std::string& mainFile);

/// What the paths take together, shared files once.
std::int64_t bytesOf(const std::vector<std::string>& paths, const InventoryQuery& query);

/// Adds the item where it takes something and the query asks for it.
void add(StoredModel model, std::int64_t bytes, const InventoryQuery& query, Inventory& inventory);

/// What Ollama has stored below the home, or for all users.
void findInOllama(const InventoryQuery& query, Inventory& inventory);

} // namespace lumo::Models
