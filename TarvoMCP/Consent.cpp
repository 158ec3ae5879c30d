#include "TarvoMCP/Consent.h"

#include "Platform/Signing.h"

#include <charconv>

namespace tarvo::mcp {

namespace platform = lumo::platform;

JsonValue questionForm(std::string_view message, const Peer& peer) {
    JsonValue::Object form{
        {"message", word(message)},
        {"requestedSchema", object({{"type", word("object")}, {"properties", object({})}})}};
    if (peer.readsModes()) {
        form.insert(form.begin(), {"mode", word("form")});
    }
    return {std::move(form)};
}

Consent consentIn(const JsonValue& reply) {
    const std::string* action = textIn(reply, "action");
    if (action == nullptr) {
        return Consent::cannotAsk;
    }
    // Nobody has said anything in a word that the protocol does not have.
    return *action == "accept"    ? Consent::given
           : *action == "decline" ? Consent::declined
           : *action == "cancel"  ? Consent::cancelled
                                  : Consent::cannotAsk;
}

ConsentTickets::ConsentTickets() : key_(platform::randomKey()) {}

std::string ConsentTickets::issue(std::string_view subject, double seconds) {
    constexpr double lifetime = 600;
    // Who issues and never redeems is given the newest ones only.
    constexpr std::size_t mostOpen = 1000;
    if (open_.size() >= mostOpen) {
        open_.clear();
    }
    const std::string number = std::to_string(next_++);
    const std::string ends = std::to_string(static_cast<std::int64_t>(seconds + lifetime));
    open_.insert(number);
    return number + "." + ends + "." + signatureFor(number, ends, subject);
}

bool ConsentTickets::redeem(std::string_view ticket, std::string_view subject, double seconds) {
    const std::size_t first = ticket.find('.');
    const std::size_t second = first == std::string_view::npos ? first : ticket.find('.', first + 1);
    if (second == std::string_view::npos) {
        return false;
    }
    const std::string_view number = ticket.substr(0, first);
    const std::string_view ends = ticket.substr(first + 1, second - first - 1);
    if (!platform::isSameSecret(ticket.substr(second + 1), signatureFor(number, ends, subject))) {
        return false;
    }
    const auto open = open_.find(number);
    if (open == open_.end()) {
        return false;
    }
    open_.erase(open);
    std::int64_t last = 0;
    std::from_chars(ends.data(), ends.data() + ends.size(), last);
    return seconds <= static_cast<double>(last);
}

std::string ConsentTickets::signatureFor(std::string_view number, std::string_view ends,
                                         std::string_view subject) const {
    return platform::signatureOf(std::string(number) + "." + std::string(ends) + "." + std::string(subject),
                                 key_);
}

} // namespace tarvo::mcp
