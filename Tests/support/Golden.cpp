#include "Tests/support/Golden.h"

#include "Tests/support/TempHome.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

namespace tarvo::testing {

void expectGolden(const std::string& name, const std::string& actual) {
    const std::string path = std::string(GOLDEN_FOLDER) + "/" + name;
    if (std::getenv("TARVO_REFRESH_GOLDEN") != nullptr) {
        std::ofstream(path, std::ios::binary) << actual;
    }
    EXPECT_EQ(contentOf(path), actual)
        << "When the change is meant, refresh the file:\n"
        << "TARVO_REFRESH_GOLDEN=1 ctest --test-dir build/release -R 'Golden|RuleCatalog'";
}

} // namespace tarvo::testing
