#include "LumoCore/Inventories/Snaps.h"

#include "LumoCore/Basics/Codec.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Inventories/AskedTool.h"
#include "Platform/LoopbackHttp.h"

#include <algorithm>

namespace lumo {

namespace {

// The reply to GET /v2/snaps: what is read of it.

struct App {
    std::optional<std::string> desktopFile;
    std::optional<std::string> daemon;
    static constexpr auto fields =
        std::tuple{field("desktop-file", &App::desktopFile), field("daemon", &App::daemon)};
};

struct Snap {
    std::string name;
    std::optional<std::string> title;
    std::optional<std::string> type;
    std::optional<std::string> status;
    std::optional<std::int64_t> installedSize;
    std::optional<std::string> installDate;
    std::optional<std::vector<App>> apps;
    static constexpr auto fields = std::tuple{field("name", &Snap::name),
                                              field("title", &Snap::title),
                                              field("type", &Snap::type),
                                              field("status", &Snap::status),
                                              field("installed-size", &Snap::installedSize),
                                              field("install-date", &Snap::installDate),
                                              field("apps", &Snap::apps)};
};

struct Reply {
    std::vector<Snap> result;
    static constexpr auto fields = std::tuple{field("result", &Reply::result)};
};

/// A name as snapd gives them, with the key of a second instance; nothing that a shell or a tool would take
/// for anything else.
bool isSnapName(std::string_view name) {
    return !name.empty() && !name.starts_with('-') && std::ranges::all_of(name, [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
    });
}

/// The day of a time with a fraction and an offset ("2024-05-01T10:00:00.5+02:00").
std::optional<Date> dayOf(std::string_view time) {
    return dateFromIsoText(std::string(time.substr(0, 10)) + "T00:00:00Z");
}

std::optional<InstalledSnap> startedByAPerson(const Snap& snap) {
    InstalledSnap installed{.name = snap.name,
                            .title = snap.title.value_or("").empty() ? snap.name : *snap.title,
                            .bytes = std::max<std::int64_t>(snap.installedSize.value_or(0), 0),
                            .installed = dayOf(snap.installDate.value_or("")),
                            .desktopIDs = {}};
    bool hasService = false;
    for (const App& app : snap.apps.value_or(std::vector<App>())) {
        hasService = hasService || app.daemon.has_value();
        if (app.desktopFile) {
            installed.desktopIDs.emplace_back(fileStem(fileName(*app.desktopFile)));
        }
    }
    const bool isMeant = isSnapName(snap.name) && snap.type.value_or("app") == "app" &&
                         snap.status.value_or("active") == "active" && !hasService &&
                         !installed.desktopIDs.empty();
    return isMeant ? std::optional(std::move(installed)) : std::nullopt;
}

} // namespace

std::vector<InstalledSnap> snapsIn(std::string_view json) {
    std::vector<InstalledSnap> snaps;
    const auto reply = decodeJson<Reply>(json);
    for (const Snap& snap : reply ? reply->result : std::vector<Snap>()) {
        if (auto started = startedByAPerson(snap)) {
            snaps.push_back(std::move(*started));
        }
    }
    return snaps;
}

std::string snapSocket(const InventoryQuery& query) {
    return query.systemRoot + "/run/snapd.socket";
}

std::optional<std::vector<InstalledSnap>> installedSnaps(const InventoryQuery& query) {
    constexpr std::size_t mostBytes = std::size_t{16} * 1024 * 1024;
    constexpr int allIsWell = 200;
    const auto reply =
        platform::askSocketFile(snapSocket(query), {.path = "/v2/snaps"},
                                {.mostBodyBytes = mostBytes, .patience = toolPatience}, query.stop);
    if (!reply) {
        return reply.error().isMissing() ? std::optional(std::vector<InstalledSnap>()) : std::nullopt;
    }
    return reply->status == allIsWell ? std::optional(snapsIn(reply->body)) : std::nullopt;
}

} // namespace lumo
