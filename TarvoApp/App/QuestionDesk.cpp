#include "TarvoApp/App/QuestionDesk.h"

#include "TarvoApp/App/QtText.h"

#include <utility>

namespace tarvo {

void QuestionDesk::ask(Asked asked) {
    asked_ = std::move(asked);
    texts_ = textsOf(asked_, home_);
    emit changed();
}

void QuestionDesk::accept() {
    const Asked agreed = std::exchange(asked_, asked::Nothing{});
    emit changed();
    emit accepted(agreed);
}

void QuestionDesk::cancel() {
    asked_ = asked::Nothing{};
    emit changed();
}

bool QuestionDesk::isAsking() const {
    return !std::holds_alternative<asked::Nothing>(asked_) && !std::holds_alternative<asked::Told>(asked_);
}

bool QuestionDesk::isConfirmingEmptyFromSettings() const {
    const auto* const empty = std::get_if<asked::Empty>(&asked_);
    return empty != nullptr && empty->isFromSettings;
}

bool QuestionDesk::isOpenInPhotos() const {
    const auto* const clean = std::get_if<asked::Clean>(&asked_);
    return clean != nullptr && clean->isFromPhotos;
}

bool QuestionDesk::isOpen() const {
    return !std::holds_alternative<asked::Nothing>(asked_) && !isConfirmingEmptyFromSettings() &&
           !isOpenInPhotos();
}

QString QuestionDesk::title() const {
    return shown(texts_.title);
}

QString QuestionDesk::message() const {
    return shownLines(texts_.message);
}

QVariantList QuestionDesk::lines() const {
    QVariantList lines;
    for (const GoingGroup& group : texts_.groups) {
        lines.push_back(
            QVariantMap{{"title", shown(group.title)}, {"bytes", shown(group.bytes)}, {"isHead", true}});
        for (const GoingItem& item : group.items) {
            lines.push_back(QVariantMap{{"title", shown(item.title)},
                                        {"bytes", shown(item.bytes)},
                                        {"place", shown(item.place)},
                                        {"isHead", false}});
        }
    }
    return lines;
}

QString QuestionDesk::acceptText() const {
    return shown(texts_.acceptText);
}

} // namespace tarvo
