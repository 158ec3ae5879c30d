#include "TarvoApp/App/ShareCard.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/LargestFirst.h"
#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/StateFile.h"

#include <QBuffer>
#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <QRectF>
#include <QString>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tarvo::ShareCard {

using lumo::Language;

namespace {

const QColor green = QColor::fromRgbF(0.11F, 0.69F, 0.48F);

/// The colors of the windows, by what they are for.
struct Palette {
    QColor background;
    QColor surface;
    QColor hairline;
    QColor ink;
    QColor quietInk;
    QColor paleGreen; ///< What was free anyway.
    QColor used;
};
const Palette light{.background = {0xF6, 0xF6, 0xF3},
                    .surface = {0xFF, 0xFF, 0xFF},
                    .hairline = {0xE2, 0xE2, 0xDD},
                    .ink = {0x1A, 0x1A, 0x19},
                    .quietInk = {0x62, 0x62, 0x5E},
                    .paleGreen = {0xC9, 0xE9, 0xDB},
                    .used = {0xD6, 0xD6, 0xD0}};
const Palette dark{.background = {0x1B, 0x1B, 0x1D},
                   .surface = {0x26, 0x26, 0x29},
                   .hairline = {0x3A, 0x3A, 0x3E},
                   .ink = {0xF3, 0xF3, 0xF0},
                   .quietInk = {0xA6, 0xA6, 0xA1},
                   .paleGreen = {0x1F, 0x52, 0x40},
                   .used = {0x4A, 0x4A, 0x50}};

/// The column with the figures, and the room for the kinds beside it.
constexpr double margin = 72;
constexpr double columnWidth = 456;
const QRectF kindsArea(584, 72, width - margin - 584, 446);

/// The dots of the milestones.
constexpr double dot = 14;
constexpr double milestonesMiddle = 485;

enum class Weight { regular, bold };
enum class Side { left, middle, right };
enum class Ink { plain, quiet };

struct Style {
    double size = 20;
    Ink ink = Ink::plain;
    Weight weight = Weight::regular;
};

/// One line of the kinds: a name and what it freed.
struct Kind {
    std::string name;
    std::int64_t bytes = 0;
};

/// Draws in one language. Nothing is ever cut: a text that is too long for its place becomes smaller.
class Drawing final {
  public:
    Drawing(QPainter& painter, const Palette& palette, Language language)
        : painter_(painter), palette_(palette), language_(language) {}

    void draw(const ShareStats& stats);

  private:
    void drawName();
    void drawFigure(std::int64_t bytes);
    void drawSpace(const ShareStats& stats);
    void drawMilestones(const ShareStats& stats);
    void drawMilestone(std::size_t index, double middle, bool isReached);
    void drawKinds(const std::vector<Kind>& kinds);
    void drawKind(const Kind& kind, std::int64_t largest, const QRectF& row);
    void drawPromise();
    [[nodiscard]] std::vector<Kind> kindsOf(const ShareStats& stats) const;

    /// Draws one line of text on the baseline and returns its width.
    double write(const std::string& text, const QRectF& line, const Style& style, Side side = Side::left);
    void fill(const QRectF& bar, const QColor& color, double radius);
    [[nodiscard]] std::string bytesText(std::int64_t bytes) const {
        return lumo::ByteFormat::string(bytes, language_);
    }

    QPainter& painter_;
    const Palette& palette_;
    Language language_;
};

QFont fontOf(const Style& style, double size) {
    QFont font = QGuiApplication::font();
    font.setPixelSize(static_cast<int>(size));
    font.setWeight(style.weight == Weight::bold ? QFont::Bold : QFont::Normal);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

double Drawing::write(const std::string& text, const QRectF& line, const Style& style, Side side) {
    constexpr double smallest = 8;
    const QString words = QString::fromStdString(text);
    double size = style.size;
    QFont font = fontOf(style, size);
    while (size > smallest && QFontMetricsF(font).horizontalAdvance(words) > line.width()) {
        font = fontOf(style, --size);
    }
    const double taken = QFontMetricsF(font).horizontalAdvance(words);
    painter_.setFont(font);
    painter_.setPen(style.ink == Ink::quiet ? palette_.quietInk : palette_.ink);
    const double room = line.width() - taken;
    const double indent = side == Side::left ? 0 : side == Side::middle ? room / 2 : room;
    // Capitals are about this much of the size; a text that had to shrink keeps their middle.
    constexpr double capitals = 0.73;
    const double lift = (style.size - size) * capitals / 2;
    painter_.drawText(QPointF(line.left() + indent, line.bottom() - lift), words);
    return taken;
}

void Drawing::fill(const QRectF& bar, const QColor& color, double radius) {
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(color);
    painter_.drawRoundedRect(bar, radius, radius);
}

void Drawing::draw(const ShareStats& stats) {
    painter_.fillRect(QRectF(0, 0, width, height), palette_.background);
    drawName();
    drawFigure(stats.freedBytes);
    drawSpace(stats);
    drawMilestones(stats);
    drawKinds(kindsOf(stats));
    drawPromise();
}

/// The name beside its sign: a small map of a disk.
void Drawing::drawName() {
    const QRectF sign(margin, margin, 44, 44);
    fill(sign, green, 10);
    fill({sign.left() + 9, sign.top() + 9, 14, 26}, palette_.surface, 3);
    fill({sign.left() + 26, sign.top() + 9, 9, 14}, palette_.surface, 3);
    fill({sign.left() + 26, sign.top() + 26, 9, 9}, palette_.paleGreen, 3);
    write("Tarvo AI", {sign.right() + 16, 0, 300, margin + 32}, {.size = 28, .weight = Weight::bold});
}

void Drawing::drawFigure(std::int64_t bytes) {
    write(lumo::Words{"Espacio liberado", "Space freed"}.in(language_), {margin, 0, columnWidth, 188},
          {.size = 24, .ink = Ink::quiet});
    write(bytesText(bytes), {margin - 4, 0, columnWidth + 4, 290}, {.size = 104, .weight = Weight::bold});
}

/// The disk as one bar, and what was free on it before and is now.
void Drawing::drawSpace(const ShareStats& stats) {
    const QRectF bar(margin, 332, columnWidth, 16);
    const auto capacity = static_cast<double>(std::max<std::int64_t>(stats.capacity, 1));
    const auto partOf = [&](std::int64_t bytes) {
        return std::clamp(static_cast<double>(bytes) / capacity, 0.0, 1.0) * bar.width();
    };
    const double now = partOf(stats.freeAfter);
    const double before = std::min(partOf(stats.shownFreeBefore()), now);
    // What was gained lies between what is used and what was free anyway.
    const auto fillPart = [&](double from, double to, const QColor& color) {
        painter_.setClipRect(QRectF(bar.left() + from, bar.top(), to - from, bar.height()));
        fill(bar, color, bar.height() / 2);
    };
    painter_.save();
    fillPart(0, bar.width() - now, palette_.used);
    fillPart(bar.width() - now, bar.width() - before, green);
    fillPart(bar.width() - before, bar.width(), palette_.paleGreen);
    painter_.restore();

    const QRectF left(margin, 0, columnWidth / 2 - 8, 376);
    const QRectF right = left.translated(columnWidth / 2 + 8, 0);
    const Style quiet{.size = 17, .ink = Ink::quiet};
    write(lumo::Words{"Libre antes", "Free before"}.in(language_), left, quiet);
    write(lumo::Words{"Libre ahora", "Free now"}.in(language_), right, quiet, Side::right);
    write(bytesText(stats.shownFreeBefore()), left.translated(0, 30), {.size = 25});
    write(bytesText(stats.freeAfter), right.translated(0, 30), {.size = 25, .weight = Weight::bold},
          Side::right);
}

/// All cleanups together, on the way from one milestone to the next.
void Drawing::drawMilestones(const ShareStats& stats) {
    const QRectF line(margin, 0, columnWidth, 456);
    const double taken =
        write(lumo::Words{"En total con Tarvo AI: ", "In total with Tarvo AI: "}.in(language_), line,
              {.size = 17, .ink = Ink::quiet});
    write(bytesText(stats.lifetimeBytes), {line.left() + taken + 6, 0, columnWidth - taken - 6, 456},
          {.size = 17, .weight = Weight::bold});

    constexpr double thickness = 3;
    const std::size_t reached = stats.reachedMilestones().size();
    const double step = (columnWidth - dot) / static_cast<double>(ShareStats::milestones.size() - 1);
    const QRectF way(margin, milestonesMiddle - thickness / 2, columnWidth, thickness);
    fill(way, palette_.used, 1);
    if (reached > 1) {
        fill({way.left(), way.top(), step * static_cast<double>(reached - 1) + dot / 2, thickness}, green, 1);
    }
    for (std::size_t index = 0; index < ShareStats::milestones.size(); ++index) {
        drawMilestone(index, margin + step * static_cast<double>(index) + dot / 2, index < reached);
    }
}

void Drawing::drawMilestone(std::size_t index, double middle, bool isReached) {
    constexpr double labelWidth = 60;
    const QRectF place(middle - dot / 2, milestonesMiddle - dot / 2, dot, dot);
    fill(place, isReached ? green : palette_.used, dot / 2);
    fill(place.adjusted(4, 4, -4, -4), isReached ? palette_.surface : palette_.background, dot / 2 - 4);
    const std::int64_t gigabytes = ShareStats::milestones[index] / 1000000000;
    const std::string label = gigabytes < 1000 ? std::to_string(gigabytes) + (index == 0 ? " GB" : "")
                                               : std::to_string(gigabytes / 1000) + " TB";
    const Style style{.size = 14,
                      .ink = isReached ? Ink::plain : Ink::quiet,
                      .weight = isReached ? Weight::bold : Weight::regular};
    const QRectF line(middle - labelWidth / 2, 0, labelWidth, milestonesMiddle + 29);
    if (index == 0) {
        write(label, line.translated(labelWidth / 2 - dot / 2, 0), style);
    } else if (index + 1 == ShareStats::milestones.size()) {
        write(label, line.translated(dot / 2 - labelWidth / 2, 0), style, Side::right);
    } else {
        write(label, line, style, Side::middle);
    }
}

std::vector<Kind> Drawing::kindsOf(const ShareStats& stats) const {
    std::vector<Kind> kinds;
    std::int64_t rest = stats.freedBytes;
    for (const ShareStats::Item& item : stats.items) {
        kinds.push_back({categoryTitle(item.category, language_), item.bytes});
        rest -= item.bytes;
    }
    if (rest > 0) {
        kinds.push_back({lumo::Words{"Apartado de antes", "From Recently Cleaned"}.in(language_), rest});
    }
    lumo::sortLargestFirst(kinds, &Kind::bytes);
    return kinds;
}

void Drawing::drawKinds(const std::vector<Kind>& kinds) {
    if (kinds.empty()) {
        return;
    }
    constexpr double mostRow = 112;
    constexpr double padding = 30;
    const auto count = static_cast<double>(kinds.size());
    const double row = std::min(mostRow, (kindsArea.height() - 2 * padding) / count);
    QRectF card = kindsArea;
    card.setHeight(row * count + 2 * padding);
    card.moveCenter(kindsArea.center());
    painter_.setPen(palette_.hairline);
    painter_.setBrush(palette_.surface);
    painter_.drawRoundedRect(card.adjusted(0.5, 0.5, -0.5, -0.5), 20, 20);
    const QRectF inside = card.adjusted(36, padding, -36, -padding);
    for (std::size_t index = 0; index < kinds.size(); ++index) {
        drawKind(kinds[index], kinds.front().bytes,
                 {inside.left(), inside.top() + row * static_cast<double>(index), inside.width(), row});
    }
}

void Drawing::drawKind(const Kind& kind, std::int64_t largest, const QRectF& row) {
    const double size = std::clamp(row.height() * 0.42, 13.0, 26.0);
    const double thickness = std::clamp(row.height() * 0.17, 5.0, 14.0);
    const double gap = size * 0.5;
    const double baseline = row.center().y() + (size * 0.75 - gap - thickness) / 2;
    const QRectF line(row.left(), 0, row.width(), baseline);
    const double taken =
        write(bytesText(kind.bytes), line, {.size = size, .weight = Weight::bold}, Side::right);
    write(kind.name, line.adjusted(0, 0, -taken - 20, 0), {.size = size});

    const QRectF bar(row.left(), baseline + gap, row.width(), thickness);
    const double part =
        static_cast<double>(kind.bytes) / static_cast<double>(std::max<std::int64_t>(largest, 1));
    fill(bar, palette_.background, thickness / 2);
    fill({bar.left(), bar.top(), std::max(bar.width() * part, thickness), thickness}, green, thickness / 2);
}

void Drawing::drawPromise() {
    write(
        lumo::Words{
            "Solo borra lo que se regenera solo. Analizar y limpiar se hace todo en tu equipo.",
            "It only deletes what recreates itself. Analyzing and cleaning all happen on your own computer."}
            .in(language_),
        {margin, 0, width - 2 * margin, 572}, {.size = 18, .ink = Ink::quiet});
}

} // namespace

QImage drawn(const ShareStats& stats, CardLook look, Language language) {
    QImage image(width, height, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    Drawing(painter, look == CardLook::dark ? dark : light, language).draw(stats);
    return image;
}

lumo::Result<void> save(const QImage& image, const std::string& home, lumo::Date now, Language language) {
    const auto failed = [&](int code) {
        return lumo::failure(imageFailedText(lumo::reasonText({code}, language), language));
    };
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!image.save(&buffer, "PNG")) {
        return failed(EINVAL);
    }
    constexpr unsigned readableByAll = 0644; // It is made to be shown.
    const auto saved = lumo::platform::replaceWhole(
        shareImagePath(home, now), {bytes.constData(), static_cast<std::size_t>(bytes.size())},
        readableByAll);
    if (!saved) {
        return failed(saved.error().code);
    }
    return {};
}

} // namespace tarvo::ShareCard
