#include "Options.h"

#include "NumberOf.h"
#include "StopProgram.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace tarvo::bench {

namespace {

std::string folderOf(std::string_view text) {
    std::error_code failure;
    const std::filesystem::path path = std::filesystem::canonical(text, failure);
    if (failure || !std::filesystem::is_directory(path, failure)) {
        stopProgram(std::string(text) + ": not a folder");
    }
    return path.string();
}

} // namespace

void readOptions(int count, char** values, const char* usage, std::initializer_list<Option> options) {
    for (int position = 1; position < count; ++position) {
        const auto* const option =
            std::ranges::find(options, std::string_view(values[position]), &Option::name);
        if (option == options.end()) {
            stopProgram(usage);
        }
        if (bool* const* const isSaid = std::get_if<bool*>(&option->value)) {
            **isSaid = true;
            continue;
        }
        if (++position == count) {
            stopProgram(usage);
        }
        if (std::string* const* const folder = std::get_if<std::string*>(&option->value)) {
            **folder = folderOf(values[position]);
        } else {
            *std::get<int*>(option->value) = numberOf(values[position], usage, option->fewest);
        }
    }
    for (const Option& option : options) {
        if (std::string* const* const folder = std::get_if<std::string*>(&option.value);
            folder != nullptr && (*folder)->empty()) {
            stopProgram(usage);
        }
    }
}

} // namespace tarvo::bench
