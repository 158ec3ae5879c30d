#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumo {

/// The names of the blobs that an Ollama manifest refers to, as they are called in the store
/// ("sha256-0123…"); the one with the weights first. Absent for what is no manifest, or refers to anything
/// but such blobs: then nobody knows what it needs.
std::optional<std::vector<std::string>> blobsOfManifest(std::string_view json);

/// The name by which Ollama knows the model of a manifest, by its path below "manifests"
/// ("registry.ollama.ai/library/llama3/8b" is "llama3:8b"); absent for any other path.
std::optional<std::string> ollamaNameOf(std::string_view path);

} // namespace lumo
