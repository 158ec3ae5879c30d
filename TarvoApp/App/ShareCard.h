#pragma once

#include "LumoCore/Basics/Date.h"
#include "LumoCore/Basics/Language.h"
#include "LumoCore/Basics/Result.h"
#include "TarvoModel/Showing/ShareStats.h"

#include <QImage>

#include <string>

/// The card that shows what a cleanup did, to be saved, copied or posted. It names kinds of things and sums
/// only.
namespace tarvo::ShareCard {

/// Width and height in pixels, as the sites show pictures beside a link.
inline constexpr int width = 1200;
inline constexpr int height = 630;

/// The card, drawn. Needs the application object, for its fonts; any thread may call.
QImage drawn(const ShareStats& stats, CardLook look = CardLook::light,
             lumo::Language language = lumo::currentLanguage());

/// Saves the picture as PNG at `shareImagePath`, whole, so that a card of the same day is replaced by this
/// one and never by half of it. The message of a failure is `imageFailedText`. Writes to the disk and waits
/// for it.
lumo::Result<void> save(const QImage& image, const std::string& home, lumo::Date now,
                        lumo::Language language = lumo::currentLanguage());

} // namespace tarvo::ShareCard
