#include "Fuzz/Check.h"
#include "LumoCore/Inventories/OllamaStore.h"

// A manifest refers to blobs of the store and to nothing else.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (const auto blobs = lumo::blobsOfManifest(text(data, size))) {
        for (const std::string& blob : *blobs) {
            check(blob.size() == std::string_view("sha256-").size() + 64 && blob.starts_with("sha256-") &&
                  blob.find_first_of("/.") == std::string::npos);
        }
    }
    (void)lumo::ollamaNameOf(text(data, size));
    return 0;
}
