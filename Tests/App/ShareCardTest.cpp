#include "TarvoApp/App/ShareCard.h"
#include "Platform/Folder.h"
#include "Tests/support/TempHome.h"

#include <gtest/gtest.h>

#include <cstdlib>

using lumo::Category;
using lumo::Language;
using tarvo::CardLook;
using tarvo::ShareStats;
using tarvo::testing::TempHome;
namespace ShareCard = tarvo::ShareCard;

namespace {

constexpr lumo::Date now{std::chrono::seconds(1790000000)};

ShareStats statsWith(std::size_t kinds, std::int64_t unit) {
    ShareStats stats{.freeBefore = 20 * unit, .capacity = 494384795648, .lifetimeBytes = 112 * unit};
    for (std::size_t index = 0; index < kinds; ++index) {
        const auto bytes = static_cast<std::int64_t>(kinds - index) * unit;
        const bool isOther = index == 9;
        stats.items.push_back({isOther ? std::nullopt : std::optional(static_cast<Category>(index)), bytes});
        stats.freedBytes += bytes;
    }
    stats.freeAfter = stats.freeBefore + stats.freedBytes;
    return stats;
}

/// True when something other than the background lies in that part of the card.
bool isDrawnOn(const QImage& image, const QRect& part) {
    const QRgb background = image.pixel(0, 0);
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            if (image.pixel(x, y) != background) {
                return true;
            }
        }
    }
    return false;
}

} // namespace

TEST(ShareCard, LeavesItsMarginsFreeHoweverMuchIsOnIt) {
    constexpr std::int64_t gigabyte = 1000000000;
    const char* folder = std::getenv("TARVO_PICTURES"); // To look at them.
    for (const Language language : {Language::es, Language::en}) {
        int number = 0;
        for (const ShareStats& stats :
             {statsWith(0, gigabyte).withEmptied(3 * gigabyte), statsWith(1, 5 * gigabyte),
              statsWith(4, gigabyte), statsWith(9, gigabyte),
              statsWith(10, gigabyte * 8000000).withEmptied(1), ShareStats()}) {
            // A dark window showed a white card.
            const auto look = number % 2 == 0 ? CardLook::light : CardLook::dark;
            const QImage image = ShareCard::drawn(stats, look, language);
            EXPECT_EQ(qGray(image.pixel(0, 0)) < 64, look == CardLook::dark);
            EXPECT_EQ(image.size(), QSize(1200, 630));
            for (const QRect& part : {QRect(0, 0, 1200, 64), QRect(0, 586, 1200, 44), QRect(0, 0, 60, 630),
                                      QRect(1136, 0, 64, 630), QRect(536, 0, 44, 540)}) {
                EXPECT_FALSE(isDrawnOn(image, part)) << number;
            }
            EXPECT_TRUE(isDrawnOn(image, {72, 200, 456, 100}));
            if (folder != nullptr) {
                image.save(
                    QString("%1/%2-%3.png").arg(folder, language == Language::es ? "es" : "en").arg(number));
            }
            ++number;
        }
    }
}

TEST(ShareCard, IsSavedWholeUnderItsDayAndReplacesOnlyThatDaysCard) {
    const TempHome home;
    const QImage one = ShareCard::drawn(statsWith(1, 1000000000), CardLook::light, Language::es);
    const QImage two = ShareCard::drawn(statsWith(2, 1000000000), CardLook::dark, Language::es);
    const auto failed = ShareCard::save(one, home.path(), now, Language::en);
    ASSERT_FALSE(failed) << "there is no desktop";
    EXPECT_TRUE(failed.error().message.starts_with("Couldn't save the image: "));
    home.folder("Desktop");
    EXPECT_FALSE(ShareCard::save(QImage(), home.path(), now));
    ASSERT_TRUE(ShareCard::save(one, home.path(), now - std::chrono::days(1)));
    ASSERT_TRUE(ShareCard::save(one, home.path(), now));
    ASSERT_TRUE(ShareCard::save(two, home.path(), now));
    EXPECT_EQ(lumo::platform::namesIn(home.path("Desktop")).size(), 2U);
    const QImage saved(QString::fromStdString(tarvo::shareImagePath(home.path(), now)));
    EXPECT_EQ(saved.convertToFormat(two.format()), two);
}
