#pragma once

#include <string>

namespace tarvo::testing {

/// Expects the file of Tests/golden to be this text. Where TARVO_REFRESH_GOLDEN is set, it is made so first.
void expectGolden(const std::string& name, const std::string& actual);

} // namespace tarvo::testing
