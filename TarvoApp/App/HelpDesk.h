#pragma once

#include "TarvoApp/App/Background.h"
#include "TarvoModel/Flows/HelpReply.h"

#include <QObject>
#include <QString>
#include <QVariantList>

#include <functional>
#include <stop_token>

namespace tarvo {

/// The help as its window shows it: the topics that a search leaves, and the answer to one question at a
/// time. A later question ends the one before.
class HelpDesk final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString helpSearch READ helpSearch WRITE setHelpSearch NOTIFY topicsChanged)
    /// Each with its id, question and answer.
    Q_PROPERTY(QVariantList topics READ topics NOTIFY topicsChanged)
    /// The id of the topic whose answer is shown; empty for none.
    Q_PROPERTY(QString expandedHelp READ expandedHelp WRITE setExpandedHelp NOTIFY expandedChanged)
    Q_PROPERTY(QString helpQuestion READ helpQuestion WRITE setHelpQuestion NOTIFY questionChanged)
    Q_PROPERTY(bool helpBusy READ isBusy NOTIFY answerChanged)
    Q_PROPERTY(QString helpAnswer READ helpAnswer NOTIFY answerChanged)
    Q_PROPERTY(bool helpByAI READ isByAI NOTIFY answerChanged)
    /// The topics that belong to the answer, each with its id and question.
    Q_PROPERTY(QVariantList helpSources READ helpSources NOTIFY answerChanged)

  public:
    /// The sources are asked for with every question, on this object's thread.
    explicit HelpDesk(std::function<HelpSources()> sources, QObject* parent = nullptr);

    /// Answers the question in the background; nothing happens when it is blank.
    Q_INVOKABLE void ask();
    /// Takes the answer away, and stops working on one.
    Q_INVOKABLE void forget();
    /// Shows a topic, whatever is searched for.
    Q_INVOKABLE void show(const QString& topic);

    /// Where the topic is among those that are shown; -1 when it is not.
    Q_INVOKABLE [[nodiscard]] int topicIndex(const QString& topic) const;

    [[nodiscard]] QString helpSearch() const { return search_; }
    void setHelpSearch(const QString& words);
    [[nodiscard]] QVariantList topics() const;
    [[nodiscard]] QString expandedHelp() const { return expanded_; }
    void setExpandedHelp(const QString& topic);
    [[nodiscard]] QString helpQuestion() const { return question_; }
    void setHelpQuestion(const QString& question);
    [[nodiscard]] bool isBusy() const { return isBusy_; }
    [[nodiscard]] QString helpAnswer() const;
    [[nodiscard]] bool isByAI() const { return reply_.answer.byAI; }
    [[nodiscard]] QVariantList helpSources() const;

  signals:
    void topicsChanged();
    void expandedChanged();
    void questionChanged();
    void answerChanged();

  private:
    std::function<HelpSources()> sources_;
    QString search_;
    QString expanded_;
    QString question_;
    HelpReply reply_;
    bool isBusy_ = false;
    std::stop_source asking_;
    Background background_; ///< Goes first, since its work uses the rest.
};

} // namespace tarvo
