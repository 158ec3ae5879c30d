#include "TarvoApp/App/PreviewDesk.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Path.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoApp/App/Thumbnails.h"

#include <algorithm>
#include <utility>

namespace tarvo {

namespace {

/// Never larger than a window needs.
constexpr QSize mostPoints(1600, 1200);

} // namespace

PreviewDesk::PreviewDesk(Make make, std::string home, QObject* parent)
    : QObject(parent), make_(std::move(make)), home_(std::move(home)), background_(1) {}

void PreviewDesk::show(const QString& key, const std::string& title, const std::vector<std::string>& paths) {
    if (paths.empty()) {
        return;
    }
    forget();
    key_ = key;
    title_ = title;
    path_ = paths.size() == 1 ? paths.front() : std::string();
    looking_ = std::stop_source();
    isBusy_ = true;
    background_.start(
        looking_, [this, paths, make = make_](const std::stop_token& looking) -> Background::Apply {
            const Preview preview = looking.stop_requested() ? Preview() : make(paths, looking);
            const QImage picture = preview.kind == Preview::Kind::file && !looking.stop_requested()
                                       ? pictureFrom(preview.path, mostPoints)
                                       : QImage();
            return [this, looking, preview, picture] {
                if (!looking.stop_requested()) {
                    isBusy_ = false;
                    preview_ = preview;
                    picture_ = picture;
                    emit changed();
                }
            };
        });
    emit changed();
    emit wanted();
}

void PreviewDesk::forget() {
    looking_.request_stop();
    isBusy_ = false;
    preview_ = {};
    picture_ = {};
    emit changed();
}

QString PreviewDesk::title() const {
    return shown(title_);
}

QString PreviewDesk::place() const {
    return path_.empty() ? QString() : shown(lumo::abbreviated(path_, home_));
}

PreviewDesk::Kind PreviewDesk::kind() const {
    if (isBusy_) {
        return Kind::Unknown;
    }
    switch (preview_.kind) {
    case Preview::Kind::folder:
        return Kind::Folder;
    case Preview::Kind::text:
        return Kind::Text;
    case Preview::Kind::file:
        return picture_.isNull() ? Kind::File : Kind::Picture;
    case Preview::Kind::other:
        return Kind::Other;
    case Preview::Kind::missing:
        break;
    }
    return Kind::Missing;
}

QString PreviewDesk::bytes() const {
    const bool isKnown = !isBusy_ && preview_.kind != Preview::Kind::missing;
    return isKnown ? shown(lumo::ByteFormat::string(preview_.bytes)) : QString();
}

QString PreviewDesk::facts() const {
    return shown(preview_.facts);
}

QString PreviewDesk::text() const {
    // Its lines were made fit to be shown one by one.
    return QString::fromStdString(preview_.text);
}

QVariantList PreviewDesk::largest() const {
    const double most =
        preview_.largest.empty() ? 1.0 : std::max(1.0, static_cast<double>(preview_.largest.front().bytes));
    QVariantList list;
    for (const lumo::NamedSize& part : preview_.largest) {
        list.push_back(QVariantMap{{"name", shown(lumo::abbreviated(part.name, home_))},
                                   {"bytes", shown(lumo::ByteFormat::string(part.bytes))},
                                   {"share", static_cast<double>(part.bytes) / most},
                                   {"isFolder", part.isDirectory}});
    }
    return list;
}

} // namespace tarvo
