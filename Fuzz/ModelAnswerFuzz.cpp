#include "Fuzz/Check.h"
#include "LumoAI/ChatInterface.h"
#include "LumoAI/Instructions.h"
#include "LumoCore/Basics/Text.h"

#include <algorithm>

// Whatever a service or a model says, what is believed of it can be shown and is one of the choices.
namespace {

void readAnswer(std::string_view bytes) {
    static const lumo::AnswerSchema schema = lumo::folderAnswerSchema(lumo::Language::en);
    const auto values = schema.read(bytes);
    if (!values) {
        return;
    }
    check(values->size() == schema.properties.size());
    for (std::size_t index = 0; index < values->size(); ++index) {
        const std::string& value = (*values)[index];
        const auto& choices = schema.properties[index].choices;
        check(lumo::printable(value) == value);
        check(choices.empty() || value.empty() || std::ranges::find(choices, value) != choices.end());
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = text(data, size);
    readAnswer(bytes);
    for (const lumo::ChatInterface chat : {lumo::ChatInterface::ollama, lumo::ChatInterface::openAI}) {
        lumo::standingIn(chat, bytes, "llama3.2");
        if (const auto answer = lumo::answerIn(chat, bytes)) {
            readAnswer(*answer);
        }
    }
    return 0;
}
