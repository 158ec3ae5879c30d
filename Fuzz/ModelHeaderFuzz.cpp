#include "Fuzz/Check.h"
#include "LumoCore/Inventories/ModelHeader.h"

// A header tells something short, or nothing.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t mostBytes = 80;
    if (const auto header = lumo::modelHeaderIn(text(data, size))) {
        check(*header != lumo::ModelHeader());
        check(header->name.size() <= mostBytes && header->parameters.size() <= mostBytes &&
              header->quantisation.size() <= mostBytes);
    }
    return 0;
}
