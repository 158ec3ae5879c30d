#pragma once

#include "TarvoModel/Showing/Asked.h"

#include <QObject>
#include <QString>
#include <QVariantList>

#include <string>
#include <utility>

namespace tarvo {

/// The one thing that the user is asked or told at a time, and the answer to it.
class QuestionDesk final : public QObject {
    Q_OBJECT
    /// True while something is asked or told in the main window; the others are asked where they belong.
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY changed)
    Q_PROPERTY(bool isOpenInSettings READ isConfirmingEmptyFromSettings NOTIFY changed)
    Q_PROPERTY(bool isOpenInPhotos READ isOpenInPhotos NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    /// May have several lines.
    Q_PROPERTY(QString message READ message NOTIFY changed)
    /// What goes, each line with its "title", "bytes" and "place" and whether it "isHead" of a group.
    Q_PROPERTY(QVariantList lines READ lines NOTIFY changed)
    /// Empty where there is nothing to agree to.
    Q_PROPERTY(QString acceptText READ acceptText NOTIFY changed)
    /// True when what is agreed to cannot be undone.
    Q_PROPERTY(bool isDangerous READ isDangerous NOTIFY changed)

  public:
    /// The home is as a path, the made-up computer's where there is one.
    QuestionDesk(std::string home, QObject* parent) : QObject(parent), home_(std::move(home)) {}

    /// Asks that instead of whatever is asked now.
    void ask(Asked asked);
    /// The question is closed first, and then everybody hears what was agreed to.
    Q_INVOKABLE void accept();
    Q_INVOKABLE void cancel();

    /// True while there is something to be agreed to: then nothing begins by itself.
    [[nodiscard]] bool isAsking() const;
    [[nodiscard]] bool isConfirming() const { return std::holds_alternative<asked::Clean>(asked_); }
    [[nodiscard]] bool isConfirmingEmptyFromSettings() const;
    [[nodiscard]] bool isOpenInPhotos() const;
    [[nodiscard]] bool isOpen() const;
    [[nodiscard]] QString title() const;
    [[nodiscard]] QString message() const;
    [[nodiscard]] QVariantList lines() const;
    [[nodiscard]] QString acceptText() const;
    [[nodiscard]] bool isDangerous() const { return texts_.isDangerous; }

  signals:
    void changed();
    void accepted(const tarvo::Asked& agreed);

  private:
    std::string home_; ///< Which is shown as "~".
    Asked asked_;
    QuestionTexts texts_; ///< Of what is asked, or was asked last: a dialog that closes still shows it.
};

} // namespace tarvo
