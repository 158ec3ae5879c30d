#pragma once

#include <string>

namespace tarvo::testing {

/// Where Ollama keeps what it has downloaded, in a home.
inline const std::string ollamaStore = ".ollama/models/";
inline const std::string ollamaManifests = ollamaStore + "manifests/registry.ollama.ai/library/";

/// The name of a blob whose digest is that digit over and over.
inline std::string blob(char digit) {
    return "sha256-" + std::string(64, digit);
}

/// What a manifest says of a model with these blobs besides the configuration, which is blob 'c'.
inline std::string manifest(const std::string& weights, const std::string& licence) {
    const auto layer = [](const std::string& type, std::string digest) {
        digest[6] = ':';
        return R"({"mediaType": ")" + type + R"(", "digest": ")" + digest + R"(", "size": 3})";
    };
    return R"({"schemaVersion": 2, "config": )" + layer("application/json", blob('c')) + R"(, "layers": [)" +
           layer("application/vnd.ollama.image.license", licence) + "," +
           layer("application/vnd.ollama.image.model", weights) + "]}";
}

} // namespace tarvo::testing
