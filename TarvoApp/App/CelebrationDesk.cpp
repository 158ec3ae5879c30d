#include "TarvoApp/App/CelebrationDesk.h"

#include "TarvoApp/App/QtText.h"

namespace tarvo {

CelebrationDesk::CelebrationDesk(const Ground& ground, QObject* parent) : QObject(parent), ground_(ground) {}

void CelebrationDesk::take(const ShareStats& stats) {
    lastShare_ = stats;
    emit changed();
    if (stats.isWorthCelebrating()) {
        celebrate(stats);
    }
}

void CelebrationDesk::celebrate(const ShareStats& stats) {
    lastShare_ = stats;
    ground_.background.start([this, stats,
                              draw = ground_.services.drawCard](const std::stop_token&) -> Background::Apply {
        return [this, stats, card = draw(stats, CardLook::light), darkCard = draw(stats, CardLook::dark)] {
            celebration_ = stats;
            image_ = card;
            darkImage_ = darkCard;
            emit changed();
        };
    });
}

void CelebrationDesk::addEmptied(std::int64_t freed) {
    if (lastShare_ && freed > 0) {
        lastShare_ = lastShare_->withEmptied(freed);
        emit changed();
    }
}

void CelebrationDesk::forget() {
    lastShare_.reset();
    emit changed();
}

void CelebrationDesk::closeCelebration() {
    celebration_.reset();
    image_ = {};
    darkImage_ = {};
    emit changed();
}

void CelebrationDesk::saveShareImage(bool isDark) {
    if (image_.isNull() || ground_.isOnlyDemo()) {
        return;
    }
    ground_.background.start([this, image = isDark ? darkImage_ : image_,
                              save = ground_.services.saveCard](const std::stop_token&) -> Background::Apply {
        return [this, saved = save(image)] {
            ground_.activity.say(saved ? imageSavedText() : saved.error().message);
        };
    });
}

void CelebrationDesk::copyCelebrationImage(bool isDark) {
    if (!image_.isNull()) {
        ground_.services.copyCard(isDark ? darkImage_ : image_);
        ground_.activity.say(imageCopiedText());
    }
}

QString CelebrationDesk::celebrationText() const {
    return celebration_ ? shown(celebration_->postText()) : QString();
}

} // namespace tarvo
