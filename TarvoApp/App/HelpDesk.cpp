#include "TarvoApp/App/HelpDesk.h"

#include "LumoCore/Basics/Text.h"
#include "TarvoApp/App/QtText.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarvo {

using lumo::HelpTopic;
namespace HelpCatalog = lumo::HelpCatalog;

namespace {

/// The words of a search that is still being typed: every one must stand somewhere in the topic.
bool hasAll(const std::vector<std::string>& words, const HelpTopic& topic) {
    std::string all = topic.question + " " + topic.answer;
    for (const std::string& keyword : topic.keywords) {
        all += " " + keyword;
    }
    all = HelpCatalog::normalize(all);
    return std::ranges::all_of(words,
                               [&](const std::string& word) { return all.find(word) != std::string::npos; });
}

std::vector<std::string> wordsIn(const std::string& normalized) {
    std::vector<std::string> words;
    for (std::string_view rest = normalized; !rest.empty();) {
        const std::string_view word = rest.substr(0, rest.find(' '));
        if (!word.empty()) {
            words.emplace_back(word);
        }
        rest.remove_prefix(std::min(word.size() + 1, rest.size()));
    }
    return words;
}

std::vector<const HelpTopic*> topicsMatching(const std::string& search) {
    const std::vector<std::string> words = wordsIn(HelpCatalog::normalize(search));
    std::vector<const HelpTopic*> found;
    for (const HelpTopic& topic : HelpCatalog::topics()) {
        if (hasAll(words, topic)) {
            found.push_back(&topic);
        }
    }
    // Other endings of a word, or one word too many.
    return found.empty() ? HelpCatalog::relevant(search, HelpCatalog::topics().size()) : found;
}

} // namespace

HelpDesk::HelpDesk(std::function<HelpSources()> sources, QObject* parent)
    : QObject(parent), sources_(std::move(sources)), background_(1) {}

void HelpDesk::ask() {
    const std::string question = bytesOf(question_.trimmed());
    if (question.empty()) {
        return;
    }
    forget();
    asking_ = std::stop_source();
    isBusy_ = true;
    background_.start(
        asking_, [this, question, sources = sources_()](const std::stop_token& asking) -> Background::Apply {
            return [this, asking, reply = answerTo(question, sources, asking)] {
                if (!asking.stop_requested()) {
                    isBusy_ = false;
                    reply_ = reply;
                    emit answerChanged();
                }
            };
        });
    emit answerChanged();
}

void HelpDesk::forget() {
    asking_.request_stop();
    isBusy_ = false;
    reply_ = {};
    emit answerChanged();
}

void HelpDesk::show(const QString& topic) {
    setHelpSearch({});
    setExpandedHelp(topic);
}

int HelpDesk::topicIndex(const QString& topic) const {
    const std::vector<const HelpTopic*> topics = topicsMatching(bytesOf(search_));
    const auto found = std::ranges::find(topics, bytesOf(topic), &HelpTopic::id);
    return found == topics.end() ? -1 : static_cast<int>(found - topics.begin());
}

void HelpDesk::setHelpSearch(const QString& words) {
    if (search_ != words) {
        search_ = words;
        emit topicsChanged();
    }
}

QVariantList HelpDesk::topics() const {
    QVariantList list;
    for (const HelpTopic* topic : topicsMatching(bytesOf(search_))) {
        list.push_back(QVariantMap{{"id", shown(topic->id)},
                                   {"question", shown(topic->question)},
                                   {"answer", shown(topic->answer)}});
    }
    return list;
}

void HelpDesk::setExpandedHelp(const QString& topic) {
    if (expanded_ != topic) {
        expanded_ = topic;
        emit expandedChanged();
    }
}

void HelpDesk::setHelpQuestion(const QString& question) {
    if (question_ != question) {
        question_ = question;
        emit questionChanged();
    }
}

QString HelpDesk::helpAnswer() const {
    return shown(reply_.answer.text);
}

QVariantList HelpDesk::helpSources() const {
    QVariantList list;
    for (const HelpTopic* topic : reply_.related) {
        list.push_back(QVariantMap{{"id", shown(topic->id)}, {"question", shown(topic->question)}});
    }
    return list;
}

} // namespace tarvo
