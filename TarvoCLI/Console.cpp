#include "TarvoCLI/Console.h"

#include "LumoCore/Basics/Words.h"
#include "Platform/Terminal.h"

namespace tarvo {

namespace platform = lumo::platform;

namespace {

std::string_view codeOf(Tint tint) {
    switch (tint) {
    case Tint::strong:
        return "\x1B[1m";
    case Tint::faint:
        return "\x1B[2m";
    case Tint::safe:
        return "\x1B[32m";
    case Tint::review:
        return "\x1B[33m";
    case Tint::problem:
        return "\x1B[31m";
    case Tint::plain:
        break;
    }
    return "";
}

} // namespace

std::string tinted(std::string_view text, Tint tint, const Invocation& invocation) {
    const std::string_view code = codeOf(tint);
    if (!invocation.hasColor || code.empty() || text.empty()) {
        return std::string(text);
    }
    return std::string(code) + std::string(text) + "\x1B[0m";
}

ExitCode print(std::string_view text) {
    if (!platform::writeAll(platform::Stream::output, text)) {
        if (platform::wasInterrupted()) {
            return ExitCode::interrupted;
        }
        return complain(lumo::Words{"no he podido escribir el resultado: comprueba a dónde va la salida",
                                    "the result could not be written: check where the output goes"}
                            .in(),
                        ExitCode::failed);
    }
    return ExitCode::done;
}

ExitCode complain(std::string_view message, ExitCode code) {
    platform::writeAll(platform::Stream::error, "tarvo: " + std::string(message) + "\n");
    return code;
}

} // namespace tarvo
